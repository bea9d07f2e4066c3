#include "platform/linux/ffmpeg_audio_codec.h"

#include "platform/linux/ffmpeg_audio_converter.h"
#include "platform/linux/ffmpeg_audio_file.h"

extern "C" {
#include <libavutil/log.h>
}

namespace velmora {

// What goes wrong is thrown; the rest of what the libraries have to say is of no use in the system's log.
FfmpegAudioCodec::FfmpegAudioCodec() {
    av_log_set_level(AV_LOG_QUIET);
}

std::unique_ptr<AudioFile> FfmpegAudioCodec::openForWriting(const QString& path,
                                                            const AudioFileSettings& settings) {
    return std::make_unique<FfmpegAudioFile>(path, settings);
}

std::unique_ptr<AudioConverter> FfmpegAudioCodec::makeMonoConverter(const AudioFormat& from,
                                                                    double targetRate) {
    return std::make_unique<FfmpegAudioConverter>(from, targetRate);
}

} // namespace velmora
