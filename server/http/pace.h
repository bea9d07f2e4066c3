#pragma once

#include "http/http_limits.h"

#include <chrono>
#include <cstdint>

namespace velmora::server {

/// Whether bytes come or go fast enough: never a silence longer than the patience, and after as long a start
/// never less than the least rate on the average. So neither a stalled nor a dripping peer lasts.
class Pace {
public:
    using Clock = std::chrono::steady_clock;

    explicit Pace(const HttpLimits& limits)
        : m_patience(limits.patience)
        , m_leastRate(limits.leastRate) {}

    void passed(std::size_t bytes) {
        m_bytes += bytes;
        m_last = Clock::now();
    }

    /// When it is too slow unless more has passed by then.
    [[nodiscard]] Clock::time_point deadline() const {
        const std::chrono::milliseconds earned(m_bytes * 1000 / m_leastRate);
        return std::min(m_start + m_patience + earned, m_last + m_patience);
    }

private:
    std::chrono::milliseconds m_patience;
    std::uint64_t m_leastRate;
    std::uint64_t m_bytes = 0;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_last = m_start;
};

} // namespace velmora::server
