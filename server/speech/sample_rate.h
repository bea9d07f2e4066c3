#pragma once

#include <chrono>
#include <cstdint>

namespace velmora::server {

/// What recognisers hear: 16-bit samples of one channel at this rate.
inline constexpr int sampleRate = 16000;

[[nodiscard]] constexpr std::chrono::milliseconds durationOf(std::size_t samples) {
    return std::chrono::milliseconds(samples * 1000 / sampleRate);
}

[[nodiscard]] constexpr std::size_t samplesIn(std::chrono::milliseconds time) {
    return static_cast<std::size_t>(time.count()) * sampleRate / 1000;
}

/// Sound is decoded and handed on in slices of half a second.
inline constexpr std::size_t sliceSize = samplesIn(std::chrono::milliseconds(500));

} // namespace velmora::server
