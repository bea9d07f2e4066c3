#pragma once

#include "platform/audio_file.h"
#include "platform/linux/ffmpeg_handles.h"

namespace velmora {

/// A band-limited converter: flat to 7.5 kHz at a target of 16 kHz, with nothing folded back from above.
class FfmpegAudioConverter final : public AudioConverter {
public:
    /// Rates from 1 kHz to 768 kHz. Throws Error.
    FfmpegAudioConverter(const AudioFormat& from, double targetRate);

    /// Throws Error also for a buffer in another format than the converter's.
    [[nodiscard]] std::vector<float> convert(const AudioBuffer& buffer) override;
    [[nodiscard]] std::vector<float> flush() override;

private:
    std::vector<float> resample(const float* mono, int frames);

    AudioFormat m_from;
    FfmpegPtr<SwrContext> m_resampler;
};

} // namespace velmora
