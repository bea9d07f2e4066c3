#pragma once

#include "accounts/clock.h"

#include <chrono>
#include <deque>
#include <map>
#include <mutex>
#include <string>

namespace velmora::server {

/// Counts events per key within a sliding window. Thread-safe.
class RateLimiter {
public:
    RateLimiter(std::size_t limit, std::chrono::seconds window, Clock clock);

    /// Counts an event and returns zero; or, at the limit, counts nothing and returns how long to wait.
    [[nodiscard]] std::chrono::seconds take(const std::string& key);

    void reset(const std::string& key);

private:
    using Times = std::deque<std::chrono::system_clock::time_point>;

    void prune();

    std::size_t m_limit;
    std::chrono::seconds m_window;
    Clock m_clock;
    std::mutex m_mutex;
    std::map<std::string, Times> m_events;
};

} // namespace velmora::server
