#pragma once

#include "platform/audio_format.h"

#include <QString>

#include <vector>

namespace velmora::test {

/// What a player makes of an audio file.
struct DecodedFile {
    AudioFormat format;
    double statedSeconds = 0;   ///< as the container says without being decoded; 0 when it doesn't
    std::vector<float> samples; ///< interleaved

    [[nodiscard]] double seconds() const {
        return double(samples.size()) / format.channels / format.sampleRate;
    }
};

/// Throws std::runtime_error when the file can't be read.
[[nodiscard]] DecodedFile decodeFile(const QString& path);

} // namespace velmora::test
