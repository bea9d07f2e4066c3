#pragma once

#include "platform/audio_format.h"

#include <QString>

#include <span>
#include <vector>

namespace velmora::test {

/// A sine of the same phase on every channel, interleaved.
[[nodiscard]] std::vector<float> makeTone(double frequency, double amplitude, double seconds,
                                          const AudioFormat& format);

/// The amplitude of a frequency in mono samples; what lies more than a few hertz beside it does not count.
[[nodiscard]] double measureTone(std::span<const float> mono, double frequency, double sampleRate);

/// One channel of interleaved samples.
[[nodiscard]] std::vector<float> takeChannel(std::span<const float> samples, int channel, int channels);

/// The greatest absolute value.
[[nodiscard]] double peakOf(std::span<const float> samples);

[[nodiscard]] double toDecibels(double ratio);

/// Writes a WAV file with 16-bit PCM.
void writeWav(const QString& path, std::span<const float> samples, const AudioFormat& format);

} // namespace velmora::test
