#pragma once

#include "accounts/clock.h"

#include <cstddef>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace velmora::server {

/// Slows down who tries the same thing again and again: the first attempts are free, each further one has to
/// keep a distance from the one before it, which doubles up to a bound. Thread-safe.
///
/// Each key has its own place, so one that is slowed down is no hindrance to another. What is remembered is
/// bounded: of too many keys the one that was quiet for longest is forgotten.
class AttemptBrake {
public:
    struct Settings {
        int free = 5;
        std::chrono::seconds firstDistance{1};
        std::chrono::seconds longestDistance{16};
        /// Nobody is told to wait longer; with more before it an attempt is refused.
        std::chrono::seconds longestWait{20};
        /// Forgets as many attempts as are free in this time; and after so long without one all of them.
        std::chrono::minutes memory{15};
        std::size_t keys = 10'000;
    };

    /// What becomes of an attempt.
    struct Answer {
        /// It has a place in time, and is made after the wait; else it counts for nothing, and has a place
        /// after the wait at the earliest.
        bool granted = false;
        std::chrono::milliseconds wait{};
    };

    AttemptBrake(const Settings& settings, SteadyClock clock);

    [[nodiscard]] Answer take(const std::string& key);

    /// The attempt was none to be held against anybody.
    void forgive(const std::string& key);

    /// All of them were.
    void forget(const std::string& key);

    /// How many keys are remembered.
    [[nodiscard]] std::size_t size();

private:
    using Time = std::chrono::steady_clock::time_point;
    struct Entry {
        std::string key;
        double attempts = 0;
        /// When the last attempt was taken, and when the next one may be made.
        Time last;
        Time next;
    };
    using Entries = std::list<Entry>;

    [[nodiscard]] Entry& entryOf(const std::string& key, Time now);
    [[nodiscard]] std::chrono::milliseconds distanceAfter(double attempts) const;
    void erase(Entries::iterator entry);

    Settings m_settings;
    SteadyClock m_clock;
    std::mutex m_mutex;
    /// Those with the oldest attempt first: what is to be forgotten is always in front.
    Entries m_entries;
    std::unordered_map<std::string, Entries::iterator> m_byKey;
};

} // namespace velmora::server
