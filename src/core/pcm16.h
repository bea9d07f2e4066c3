#pragma once

#include <QByteArray>

#include <span>

namespace velmora {

/// Signed 16-bit little-endian samples: clamped to -1.0 to 1.0, times 32767, truncated toward zero.
[[nodiscard]] QByteArray toPcm16(std::span<const float> samples);

} // namespace velmora
