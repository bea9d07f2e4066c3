#pragma once

#include "platform/audio_file.h"
#include "platform/linux/ffmpeg_handles.h"

#include <cstdint>

namespace velmora {

/// AAC in an MPEG-4 container. While it is written it grows by fragments of a second, so that the death of
/// the process costs no more than the last one; when it is finished it becomes a plain file.
class FfmpegAudioFile final : public AudioFile {
public:
    /// Throws Error when the path or the settings are refused.
    FfmpegAudioFile(QString path, const AudioFileSettings& settings);
    ~FfmpegAudioFile() override;

    void write(std::span<const float> samples) override;
    void finish() override;

private:
    void openEncoder(const AudioFileSettings& settings);
    void writeHeader();
    void encode(std::size_t frames);
    void writePackets();
    void complete();

    QString m_path;
    FfmpegPtr<AVCodecContext> m_encoder;
    FfmpegPtr<AVFrame> m_frame;
    FfmpegPtr<AVPacket> m_packet;
    FfmpegOutput m_container;     // after the encoder: an encoder that refuses its settings leaves no file
    std::vector<float> m_pending; // interleaved, less than a frame of the encoder's
    std::int64_t m_position = 0;  // frames encoded
    qint64 m_wholeBytes = 0;      // of the file's fragments that are on the disk from end to end
};

} // namespace velmora
