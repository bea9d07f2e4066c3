#pragma once

#include "accounts/clock.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>

namespace velmora::server {

/// The line of dictations before a recogniser that works on so many pieces at once. Each piece has a turn of
/// its own. Of those that wait the one goes next whose account has had the least so far, measured in sound;
/// so a newcomer is next but for the pieces under way, however many dictations others have waiting. Among
/// those of one account, and of accounts that have had as much, the dictation goes first that came first.
/// Thread-safe.
class DictationLine {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::milliseconds;

    class Turn;
    class Place;

    /// What a dictation would have to expect.
    struct Forecast {
        Duration wait{};
        Duration work{};
    };

    /// `clock` is what the pace of the work is measured by.
    explicit DictationLine(unsigned turns, SteadyClock clock = std::chrono::steady_clock::now);

    [[nodiscard]] Forecast forecast(const std::string& account, Duration sound) const;

    /// How many wait for a turn.
    [[nodiscard]] std::size_t waiting() const;

private:
    struct Call {
        const Place* place;
        Duration sound;
        bool called = false;
    };

    void callNext();
    [[nodiscard]] Duration startOf(const std::string& account) const;
    void finish(Place& place, Duration sound, Duration work);

    const unsigned m_turns;
    const SteadyClock m_clock;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_changed;
    unsigned m_free;
    std::list<Place*> m_places;
    std::list<Call*> m_calls;
    std::uint64_t m_numbers = 0;
    /// Where the account stands that was called last, and where those stand that are ahead of that. An
    /// account that joins begins there, and not with what it could have had while it was away.
    Duration m_standing{};
    std::map<std::string, Duration> m_ahead;
    /// How much work how much sound has been lately.
    Duration m_work;
    Duration m_sound;
};

/// A turn, until it is destroyed.
class DictationLine::Turn {
public:
    Turn(Place& place, Duration sound, Time begin);
    ~Turn();
    Turn(Turn&& other) noexcept;
    Turn& operator=(Turn&&) = delete;

private:
    Place* m_place;
    Duration m_sound;
    Time m_begin;
};

/// A dictation in the line.
class DictationLine::Place {
public:
    /// `sound` is how long it is, as far as one knows.
    Place(DictationLine& line, std::string account, Duration sound);
    ~Place();
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    /// Waits for a turn for so much of the sound. Empty if a stop is requested, or if it gets too late.
    [[nodiscard]] std::optional<Turn> turn(Duration sound, const std::stop_token& stop, Time latest);

private:
    friend class DictationLine;

    DictationLine& m_line;
    std::string m_account;
    Duration m_left;
    std::uint64_t m_number;
};

} // namespace velmora::server
