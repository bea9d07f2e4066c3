#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace velmora::bench {

using Clock = std::chrono::steady_clock;

/// The time between two moments, in milliseconds.
[[nodiscard]] double milliseconds(Clock::time_point from, Clock::time_point to);

/// What repeated runs of one measurement gave.
class Samples {
public:
    Samples() = default;
    explicit Samples(std::vector<double> values);

    void add(double value);
    void add(const Samples& more);
    [[nodiscard]] std::size_t count() const { return m_sorted.size(); }
    /// The value that the share `q` of the runs, from 0 to 1, did not exceed. Needs a run.
    [[nodiscard]] double quantile(double q) const;
    [[nodiscard]] double median() const { return quantile(0.5); }

private:
    std::vector<double> m_sorted;
};

} // namespace velmora::bench
