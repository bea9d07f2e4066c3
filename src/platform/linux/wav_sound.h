#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace velmora {

/// A sound held in memory.
struct WavSound {
    int sampleRate = 0; ///< frames a second
    int channels = 0;
    std::vector<float> samples; ///< interleaved, -1.0 to 1.0
};

/// Reads the bytes of a WAV file with 16-bit PCM; none for anything else.
[[nodiscard]] std::optional<WavSound> readWavSound(const QByteArray& bytes);

} // namespace velmora
