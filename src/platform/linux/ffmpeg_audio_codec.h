#pragma once

#include "platform/audio_file.h"

namespace velmora {

/// libav's AAC encoder and libswresample.
class FfmpegAudioCodec final : public AudioCodec {
public:
    FfmpegAudioCodec();

    [[nodiscard]] std::unique_ptr<AudioFile> openForWriting(const QString& path,
                                                            const AudioFileSettings& settings) override;
    [[nodiscard]] std::unique_ptr<AudioConverter> makeMonoConverter(const AudioFormat& from,
                                                                    double targetRate) override;
};

} // namespace velmora
