#pragma once

#include "foundation/main_loop.h"

#include <deque>
#include <map>

namespace velmora::test {

/// A main loop whose clocks move only when the test says so.
class HandLoop final : public MainLoop {
public:
    /// Where both clocks stand at the beginning: 2026-01-01 00:00:00 UTC.
    static constexpr Date startDate{std::chrono::sys_days{std::chrono::year{2026} / 1 / 1}};

    [[nodiscard]] TimePoint now() const override { return TimePoint(m_elapsed); }
    [[nodiscard]] Date date() const override { return startDate + m_elapsed; }
    void post(Work work) override;
    [[nodiscard]] Timer after(Duration delay, Work work) override;
    [[nodiscard]] Timer every(Duration interval, Work work) override;

    /// Runs what is posted, and what that posts, without moving the clocks.
    void runPosted();
    /// Moves the clocks on, running everything that falls due in its order and at its own time.
    void advance(Duration duration);
    /// How many timers are waiting.
    [[nodiscard]] std::size_t pendingTimers() const { return m_timers->size(); }

private:
    struct Entry {
        std::shared_ptr<Work> work;
        Duration interval{}; // zero for a single shot
    };
    using Key = std::pair<Duration, int>; // due, and the order of scheduling
    using Timers = std::map<Key, Entry>;

    Timer schedule(Duration delay, Duration interval, Work work);

    Duration m_elapsed{};
    int m_nextOrder = 0;
    std::deque<Work> m_posted;
    std::shared_ptr<Timers> m_timers = std::make_shared<Timers>();
};

} // namespace velmora::test
