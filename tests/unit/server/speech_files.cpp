#include "speech_files.h"

#include "speech/audio_decoder.h"
#include "speech/sample_rate.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
}

namespace velmora::server {

namespace {

void require(bool condition, const std::string& what) {
    if (!condition) {
        throw std::runtime_error(what + " failed");
    }
}

using Samples = std::vector<std::int16_t>;

/// The samples as the encoder wants them.
class Planes {
public:
    Planes(const Samples& samples, AVCodecContext& codec)
        : m_codec(codec) {
        SwrContext* resampler = nullptr;
        AVChannelLayout mono{};
        av_channel_layout_default(&mono, 1);
        require(swr_alloc_set_opts2(&resampler, &codec.ch_layout, codec.sample_fmt, codec.sample_rate, &mono,
                                    AV_SAMPLE_FMT_S16, sampleRate, 0, nullptr) == 0,
                "resampler");
        // The usual way to more channels makes each of them quieter.
        const std::vector<double> same(static_cast<std::size_t>(codec.ch_layout.nb_channels), 1);
        require(swr_set_matrix(resampler, same.data(), 1) == 0 && swr_init(resampler) == 0, "resampler");
        const int room = swr_get_out_samples(resampler, static_cast<int>(samples.size())) + codec.sample_rate;
        require(av_samples_alloc_array_and_samples(&m_data, nullptr, codec.ch_layout.nb_channels, room,
                                                   codec.sample_fmt, 0) >= 0,
                "samples");
        const auto* input = reinterpret_cast<const std::uint8_t*>(samples.data());
        m_count = swr_convert(resampler, m_data, room, &input, static_cast<int>(samples.size()));
        require(m_count >= 0, "resampling");
        swr_free(&resampler);
    }
    ~Planes() {
        av_freep(&m_data[0]);
        av_freep(&m_data);
    }
    Planes(const Planes&) = delete;
    Planes& operator=(const Planes&) = delete;

    [[nodiscard]] int count() const { return m_count; }

    /// Lets the frame have these without owning them.
    void lend(AVFrame& frame, int begin, int count) const {
        const bool planar = av_sample_fmt_is_planar(m_codec.sample_fmt) != 0;
        const int channels = m_codec.ch_layout.nb_channels;
        const auto offset = begin * av_get_bytes_per_sample(m_codec.sample_fmt) * (planar ? 1 : channels);
        for (int plane = 0; plane < (planar ? channels : 1); ++plane) {
            frame.data[plane] = m_data[plane] + offset;
        }
        frame.extended_data = frame.data;
        frame.nb_samples = count;
        frame.format = m_codec.sample_fmt;
        frame.sample_rate = m_codec.sample_rate;
        frame.pts = begin;
        av_channel_layout_copy(&frame.ch_layout, &m_codec.ch_layout);
    }

private:
    AVCodecContext& m_codec;
    std::uint8_t** m_data = nullptr;
    int m_count = 0;
};

} // namespace

void encode(const Samples& samples, const Encoding& encoding, const std::filesystem::path& file) {
    AVFormatContext* format = nullptr;
    require(avformat_alloc_output_context2(&format, nullptr, encoding.container.c_str(), file.c_str()) >= 0,
            "muxer");
    const auto* encoder = avcodec_find_encoder_by_name(encoding.codec.c_str());
    require(encoder, "finding " + encoding.codec);
    auto* codec = avcodec_alloc_context3(encoder);
    codec->sample_fmt = encoder->sample_fmts[0];
    codec->sample_rate = encoding.rate;
    codec->bit_rate = 64000;
    av_channel_layout_default(&codec->ch_layout, encoding.channels);
    codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    require(avcodec_open2(codec, nullptr, nullptr) == 0, "encoder");
    auto* stream = avformat_new_stream(format, nullptr);
    avcodec_parameters_from_context(stream->codecpar, codec);
    stream->time_base = {1, codec->sample_rate};
    require(avio_open(&format->pb, file.c_str(), AVIO_FLAG_WRITE) == 0, "opening");
    AVDictionary* options = nullptr;
    av_dict_set(&options, "movflags", "delay_moov+default_base_moof", 0);
    av_dict_set(&options, "frag_duration", "1000000", 0);
    require(avformat_write_header(format, &options) >= 0, "header");
    av_dict_free(&options);

    auto* frame = av_frame_alloc();
    auto* packet = av_packet_alloc();
    const Planes planes(samples, *codec);
    const auto frameSize = codec->frame_size > 0 ? codec->frame_size : 1024;
    const auto drain = [&] {
        while (avcodec_receive_packet(codec, packet) == 0) {
            av_packet_rescale_ts(packet, codec->time_base, stream->time_base);
            require(av_write_frame(format, packet) >= 0, "writing");
            av_packet_unref(packet);
        }
    };
    for (int begin = 0; begin < planes.count(); begin += frameSize) {
        planes.lend(*frame, begin, std::min(frameSize, planes.count() - begin));
        require(avcodec_send_frame(codec, frame) == 0, "encoding");
        av_frame_unref(frame);
        drain();
    }
    avcodec_send_frame(codec, nullptr);
    drain();
    av_write_frame(format, nullptr);
    require(av_write_trailer(format) >= 0, "trailer");
    av_frame_free(&frame);
    av_packet_free(&packet);
    avcodec_free_context(&codec);
    avio_closep(&format->pb);
    avformat_free_context(format);
}

void speakToWav(const std::string& text, const std::filesystem::path& file) {
    const auto name = file.string();
    std::vector<const char*> arguments{"flite",      "-voice", "kal16",      "-t",
                                       text.c_str(), "-o",     name.c_str(), nullptr};
    pid_t child = 0;
    require(
        ::posix_spawnp(&child, "flite", nullptr, nullptr, const_cast<char**>(arguments.data()), environ) == 0,
        "starting flite");
    int status = 0;
    require(::waitpid(child, &status, 0) == child && status == 0, "flite");
}

void speakToM4a(const std::string& text, const std::filesystem::path& file) {
    const auto wav = std::filesystem::path(file).replace_extension(".for-m4a.wav");
    speakToWav(text, wav);
    const int descriptor = ::open(wav.c_str(), O_RDONLY | O_CLOEXEC);
    std::vector<std::int16_t> samples;
    AudioDecoder decoder(descriptor);
    for (auto more = decoder.read(); !more.empty(); more = decoder.read()) {
        samples.insert(samples.end(), more.begin(), more.end());
    }
    ::close(descriptor);
    encode(samples, {.container = "ipod", .codec = "aac", .channels = 2}, file);
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace velmora::server
