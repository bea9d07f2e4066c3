#include "accounts/attempt_brake.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmora::server {

using std::chrono::milliseconds;

AttemptBrake::AttemptBrake(const Settings& settings, SteadyClock clock)
    : m_settings(settings)
    , m_clock(std::move(clock)) {}

AttemptBrake::Answer AttemptBrake::take(const std::string& key) {
    const std::scoped_lock lock(m_mutex);
    const auto now = m_clock();
    auto& entry = entryOf(key, now);
    const auto begin = std::max(now, entry.next);
    const auto wait = std::chrono::ceil<milliseconds>(begin - now);
    if (wait > m_settings.longestWait) {
        return {.granted = false, .wait = wait - m_settings.longestWait};
    }
    entry.attempts += 1;
    entry.next = begin + distanceAfter(entry.attempts);
    return {.granted = true, .wait = wait};
}

void AttemptBrake::forgive(const std::string& key) {
    const std::scoped_lock lock(m_mutex);
    if (const auto found = m_byKey.find(key); found != m_byKey.end()) {
        found->second->attempts = std::max(0.0, found->second->attempts - 1);
    }
}

void AttemptBrake::forget(const std::string& key) {
    const std::scoped_lock lock(m_mutex);
    if (const auto found = m_byKey.find(key); found != m_byKey.end()) {
        erase(found->second);
    }
}

std::size_t AttemptBrake::size() {
    const std::scoped_lock lock(m_mutex);
    return m_entries.size();
}

AttemptBrake::Entry& AttemptBrake::entryOf(const std::string& key, Time now) {
    while (!m_entries.empty() && m_entries.front().last + m_settings.memory <= now) {
        erase(m_entries.begin());
    }
    if (const auto found = m_byKey.find(key); found != m_byKey.end()) {
        m_entries.splice(m_entries.end(), m_entries, found->second);
        auto& entry = m_entries.back();
        const std::chrono::duration<double> quiet = now - std::exchange(entry.last, now);
        entry.attempts = std::max(0.0, entry.attempts - quiet / m_settings.memory * m_settings.free);
        return entry;
    }
    if (m_entries.size() >= m_settings.keys) {
        erase(m_entries.begin());
    }
    m_entries.push_back({.key = key, .attempts = 0, .last = now, .next = now});
    m_byKey.emplace(key, std::prev(m_entries.end()));
    return m_entries.back();
}

milliseconds AttemptBrake::distanceAfter(double attempts) const {
    if (std::ceil(attempts) < m_settings.free) {
        return {};
    }
    milliseconds distance = m_settings.firstDistance;
    for (int i = m_settings.free; i < std::ceil(attempts) && distance < m_settings.longestDistance; ++i) {
        distance *= 2;
    }
    return std::min<milliseconds>(distance, m_settings.longestDistance);
}

void AttemptBrake::erase(Entries::iterator entry) {
    m_byKey.erase(entry->key);
    m_entries.erase(entry);
}

} // namespace velmora::server
