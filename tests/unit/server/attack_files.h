#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmora::server {

/// FLAC frames of 65,535 samples that are all the same: 17 bytes each, whatever the rate makes of them.
[[nodiscard]] std::string constantFlac(std::uint32_t rate, int frames = 1);

/// A WAV file whose header says what it likes about the samples in it.
[[nodiscard]] std::string wavWith(const std::vector<std::int16_t>& interleaved, std::uint16_t channels,
                                  std::uint32_t rate);

/// A QuickTime file with one picture of that size, all of whose lines are there.
[[nodiscard]] std::string filmOfOnePng(std::uint32_t width, std::uint32_t height);

/// A QuickTime file that says in a few bytes that it has so many samples of sound, each of one byte.
[[nodiscard]] std::string filmOfManySamples(std::uint32_t count);

} // namespace velmora::server
