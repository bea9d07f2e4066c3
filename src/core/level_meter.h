#pragma once

#include "platform/audio_format.h"

namespace velmora {

/// Loudness of the first channel: -60 dBFS and below is 0.0, 0 dBFS is 1.0, linear in decibels between; 0.0
/// for a buffer without frames. Not smoothed.
[[nodiscard]] float levelOf(const AudioBuffer& buffer);

} // namespace velmora
