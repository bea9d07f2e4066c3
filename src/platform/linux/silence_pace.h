#pragma once

#include <chrono>
#include <cstdint>

namespace velmora {

/// Counts the silence that stands in for an input that is gone, so that what is recorded stays as long as the
/// time that passed.
class SilencePace {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    explicit SilencePace(double sampleRate)
        : m_sampleRate(sampleRate) {}

    /// The input's last sample was taken at `since`. Does nothing when the silence has begun already.
    void begin(TimePoint since);
    void end() { m_active = false; }
    [[nodiscard]] bool isActive() const { return m_active; }

    /// Frames of silence that are due at `now` and were not taken yet, less the `upcoming` ones that the
    /// input is about to deliver itself.
    [[nodiscard]] std::int64_t take(TimePoint now, std::int64_t upcoming = 0);

private:
    double m_sampleRate;
    bool m_active = false;
    TimePoint m_since;
    std::int64_t m_taken = 0;
};

} // namespace velmora
