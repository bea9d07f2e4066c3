#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace velmora::server {

/// A WAV file of 16 kHz mono samples.
[[nodiscard]] std::string wavFile(std::span<const std::int16_t> samples);

} // namespace velmora::server
