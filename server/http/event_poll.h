#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>

namespace velmora::server {

/// Waits for many descriptors at once. Each tells of one event and is silent then until it is armed again.
class EventPoll {
public:
    using Id = std::uint64_t;
    enum class For { Reading, Writing };

    /// Fails with std::system_error.
    EventPoll();
    ~EventPoll();
    EventPoll(const EventPoll&) = delete;
    EventPoll& operator=(const EventPoll&) = delete;

    /// Not armed yet. It is forgotten when it is closed.
    void add(int descriptor, Id id);
    void arm(int descriptor, Id id, For what);

    /// Ends the wait that is or the next one. May be called from any thread.
    void wake() const;

    /// Calls back for each that has something, after a wait until `deadline` at the longest.
    void wait(std::chrono::steady_clock::time_point deadline, const std::function<void(Id)>& ready);

private:
    void control(int operation, int descriptor, Id id, std::uint32_t events);

    int m_poll;
    int m_wake;
};

} // namespace velmora::server
