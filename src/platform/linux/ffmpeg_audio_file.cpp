#include "platform/linux/ffmpeg_audio_file.h"

#include "foundation/log.h"
#include "platform/linux/ffmpeg_container.h"
#include "platform/linux/ffmpeg_error.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace velmora {
namespace {

constexpr int maxChannels = 8;
constexpr int maxQuality = 127;
// AAC's own bound is 6144 bits a channel in a frame of 1024 samples.
constexpr double maxBitsPerSample = 6.0;
// The encoder's scale of quality goes from about 0.1 to 2.
constexpr double bestEncoderQuality = 2.0;
constexpr double worstEncoderQuality = 0.1;

void checkSettings(const AudioFileSettings& settings) {
    const AudioFormat& format = settings.format;
    if (format.channels < 1 || format.channels > maxChannels)
        throw PlainError(QStringLiteral("AAC: %1 channels").arg(format.channels));
    if (settings.bitRate && settings.quality)
        throw PlainError(QStringLiteral("AAC: both a bit rate and a quality"));
    if (settings.bitRate && (*settings.bitRate <= 0 ||
                             *settings.bitRate > maxBitsPerSample * format.sampleRate * format.channels))
        throw PlainError(
            QStringLiteral("AAC: %1 bit/s at %2 Hz").arg(*settings.bitRate).arg(format.sampleRate));
    if (settings.quality && (*settings.quality < 0 || *settings.quality > maxQuality))
        throw PlainError(QStringLiteral("AAC: quality %1").arg(*settings.quality));
}

// Never a device: root may delete those.
void removeFile(const QString& path) {
    const QFileInfo file(path);
    if (file.isFile() || file.isSymLink())
        QFile::remove(path);
}

} // namespace

FfmpegAudioFile::FfmpegAudioFile(QString path, const AudioFileSettings& settings)
    : m_path(std::move(path))
    , m_frame(ownFfmpeg(av_frame_alloc()))
    , m_packet(ownFfmpeg(av_packet_alloc())) {
    checkSettings(settings);
    openEncoder(settings);
    m_container = createContainer(m_path);
    writeHeader();
}

FfmpegAudioFile::~FfmpegAudioFile() {
    try {
        if (m_container)
            finish();
    } catch (...) {
        log(QStringLiteral("[Velmora] recording not finished: %1").arg(describe(std::current_exception())));
    }
}

void FfmpegAudioFile::openEncoder(const AudioFileSettings& settings) {
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
    if (!codec)
        throw FfmpegError(QStringLiteral("AAC"), AVERROR_ENCODER_NOT_FOUND);
    m_encoder = ownFfmpeg(avcodec_alloc_context3(codec));
    m_encoder->sample_rate = int(std::lround(settings.format.sampleRate));
    m_encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
    m_encoder->time_base = {1, m_encoder->sample_rate};
    m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    av_channel_layout_default(&m_encoder->ch_layout, settings.format.channels);
    if (settings.bitRate)
        m_encoder->bit_rate = *settings.bitRate;
    if (settings.quality) {
        const double quality = bestEncoderQuality * *settings.quality / maxQuality;
        m_encoder->flags |= AV_CODEC_FLAG_QSCALE;
        m_encoder->global_quality = int(FF_QP2LAMBDA * std::max(quality, worstEncoderQuality));
    }
    checkFfmpeg(QStringLiteral("AAC at %1 Hz").arg(settings.format.sampleRate),
                avcodec_open2(m_encoder.get(), codec, nullptr));
}

void FfmpegAudioFile::writeHeader() {
    AVStream* stream = avformat_new_stream(m_container.get(), nullptr);
    if (!stream)
        throw std::bad_alloc();
    stream->time_base = m_encoder->time_base;
    checkFfmpeg(m_path, avcodec_parameters_from_context(stream->codecpar, m_encoder.get()));
    m_container->flags |= AVFMT_FLAG_FLUSH_PACKETS;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "movflags", "delay_moov+default_base_moof", 0);
    av_dict_set(&options, "frag_duration", "1000000", 0); // µs
    const int begun = avformat_write_header(m_container.get(), &options);
    av_dict_free(&options);
    checkFfmpeg(m_path, begun);
}

void FfmpegAudioFile::write(std::span<const float> samples) {
    const auto channels = std::size_t(m_encoder->ch_layout.nb_channels);
    const auto frameSize = std::size_t(m_encoder->frame_size);
    if (samples.size() % channels != 0)
        throw PlainError(QStringLiteral("AAC: %1 samples in %2 channels").arg(samples.size()).arg(channels));
    while (!samples.empty()) {
        const std::size_t taken = std::min(samples.size(), frameSize * channels - m_pending.size());
        m_pending.insert(m_pending.end(), samples.begin(), samples.begin() + std::ptrdiff_t(taken));
        samples = samples.subspan(taken);
        if (m_pending.size() == frameSize * channels)
            encode(frameSize);
    }
}

// Encodes what is pending and leaves nothing of it, even when it throws.
void FfmpegAudioFile::encode(std::size_t frames) {
    const std::vector<float> samples = std::exchange(m_pending, {});
    const auto channels = std::size_t(m_encoder->ch_layout.nb_channels);
    av_frame_unref(m_frame.get());
    m_frame->nb_samples = int(frames);
    m_frame->format = m_encoder->sample_fmt;
    m_frame->sample_rate = m_encoder->sample_rate;
    m_frame->pts = m_position;
    m_position += std::int64_t(frames);
    checkFfmpeg(m_path, av_channel_layout_copy(&m_frame->ch_layout, &m_encoder->ch_layout));
    checkFfmpeg(m_path, av_frame_get_buffer(m_frame.get(), 0));
    for (std::size_t channel = 0; channel < channels; ++channel) {
        auto* plane = reinterpret_cast<float*>(m_frame->extended_data[channel]);
        for (std::size_t i = 0; i < frames; ++i)
            plane[i] = samples[i * channels + channel];
    }
    checkFfmpeg(m_path, avcodec_send_frame(m_encoder.get(), m_frame.get()));
    writePackets();
}

void FfmpegAudioFile::writePackets() {
    while (true) {
        const int received = avcodec_receive_packet(m_encoder.get(), m_packet.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF)
            return;
        checkFfmpeg(m_path, received);
        AVStream* stream = m_container->streams[0];
        av_packet_rescale_ts(m_packet.get(), m_encoder->time_base, stream->time_base);
        checkFfmpeg(m_path, av_write_frame(m_container.get(), m_packet.get()));
        checkFfmpeg(m_path, m_container->pb->error);
        m_wholeBytes = avio_tell(m_container->pb);
    }
}

void FfmpegAudioFile::finish() {
    try {
        complete();
        m_container.reset();
    } catch (...) {
        m_container.reset();
        QFile::resize(m_path, m_wholeBytes); // a fragment that breaks off would spoil the rest for a decoder
        if (!holdsSound(m_path))
            removeFile(m_path);
        throw;
    }
    try {
        makePlainContainer(m_path);
    } catch (const Error& error) {
        log(QStringLiteral("[Velmora] recording stays in fragments: ") + error.localizedDescription());
    }
}

void FfmpegAudioFile::complete() {
    if (!m_pending.empty())
        encode(m_pending.size() / std::size_t(m_encoder->ch_layout.nb_channels));
    checkFfmpeg(m_path, avcodec_send_frame(m_encoder.get(), nullptr));
    writePackets();
    checkFfmpeg(m_path, av_write_trailer(m_container.get()));
    avio_flush(m_container->pb);
    checkFfmpeg(m_path, m_container->pb->error);
}

} // namespace velmora
