#pragma once

#include <span>

namespace velmora {

/// Linear PCM, 32-bit float.
struct AudioFormat {
    double sampleRate = 0; ///< frames a second
    int channels = 0;

    bool operator==(const AudioFormat&) const = default;
};

/// A view of interleaved samples, -1.0 to 1.0; valid only during the call that hands it over.
struct AudioBuffer {
    AudioFormat format;
    std::span<const float> samples; ///< frames() times format.channels values

    [[nodiscard]] int frames() const {
        return format.channels > 0 ? static_cast<int>(samples.size()) / format.channels : 0;
    }
};

} // namespace velmora
