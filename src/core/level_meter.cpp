#include "core/level_meter.h"

#include <algorithm>
#include <cmath>

namespace velmora {

float levelOf(const AudioBuffer& buffer) {
    const int frames = buffer.frames();
    if (frames == 0)
        return 0;
    double sum = 0;
    for (int frame = 0; frame < frames; ++frame) {
        const double sample = buffer.samples[static_cast<std::size_t>(frame) * buffer.format.channels];
        sum += sample * sample;
    }
    const double rms = std::sqrt(sum / frames);
    const double decibels = 20 * std::log10(rms + 1e-7);
    return static_cast<float>(std::clamp((decibels + 60) / 60, 0.0, 1.0));
}

} // namespace velmora
