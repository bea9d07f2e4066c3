#include "accounts/rate_limiter.h"

namespace velmora::server {

RateLimiter::RateLimiter(std::size_t limit, std::chrono::seconds window, Clock clock)
    : m_limit(limit)
    , m_window(window)
    , m_clock(std::move(clock)) {}

std::chrono::seconds RateLimiter::take(const std::string& key) {
    const std::scoped_lock lock(m_mutex);
    prune();
    auto& times = m_events[key];
    if (times.size() < m_limit) {
        times.push_back(m_clock());
        return {};
    }
    return std::chrono::ceil<std::chrono::seconds>(times.front() + m_window - m_clock());
}

void RateLimiter::reset(const std::string& key) {
    const std::scoped_lock lock(m_mutex);
    m_events.erase(key);
}

void RateLimiter::prune() {
    const auto begin = m_clock() - m_window;
    for (auto entry = m_events.begin(); entry != m_events.end();) {
        auto& times = entry->second;
        while (!times.empty() && times.front() <= begin) {
            times.pop_front();
        }
        entry = times.empty() ? m_events.erase(entry) : std::next(entry);
    }
}

} // namespace velmora::server
