#include "platform/linux/ffmpeg_audio_codec.h"

#include "platform/linux/ffmpeg_audio_converter.h"
#include "platform/linux/ffmpeg_audio_file.h"

namespace velmora {

std::unique_ptr<AudioFile> FfmpegAudioCodec::openForWriting(const QString& path,
                                                            const AudioFileSettings& settings) {
    return std::make_unique<FfmpegAudioFile>(path, settings);
}

std::unique_ptr<AudioConverter> FfmpegAudioCodec::makeMonoConverter(const AudioFormat& from,
                                                                    double targetRate) {
    return std::make_unique<FfmpegAudioConverter>(from, targetRate);
}

} // namespace velmora
