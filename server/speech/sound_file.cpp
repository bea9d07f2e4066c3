#include "speech/sound_file.h"

#include "speech/sample_rate.h"
#include "speech/sound_formats.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace velmora::server {

namespace {

constexpr int ioBufferSize = 32 * 1024;
constexpr int maximalChannels = 16;
/// Below, nobody would understand a word, and a few bytes would be hours; above, no microphone records.
constexpr int lowestRate = 4000;
constexpr int highestRate = 192'000;

template<auto free>
struct Freed {
    template<typename T>
    void operator()(T* pointer) const {
        free(&pointer);
    }
};

void freeIo(AVIOContext** io) {
    if (*io) {
        av_freep(&(*io)->buffer);
    }
    avio_context_free(io);
}

int readFile(void* opaque, std::uint8_t* buffer, int size) {
    const auto count = ::read(*static_cast<int*>(opaque), buffer, static_cast<std::size_t>(size));
    if (count < 0) {
        return AVERROR(errno);
    }
    return count == 0 ? AVERROR_EOF : static_cast<int>(count);
}

std::int64_t seekFile(void* opaque, std::int64_t offset, int whence) {
    const int descriptor = *static_cast<int*>(opaque);
    if (whence & AVSEEK_SIZE) {
        const auto here = ::lseek(descriptor, 0, SEEK_CUR);
        const auto size = ::lseek(descriptor, 0, SEEK_END);
        ::lseek(descriptor, here, SEEK_SET);
        return size;
    }
    return ::lseek(descriptor, offset, whence & ~AVSEEK_FORCE);
}

void require(bool condition, const char* what) {
    if (!condition) {
        throw AudioError(what);
    }
}

} // namespace

struct SoundFile::State {
    int descriptor;
    std::unique_ptr<AVIOContext, Freed<freeIo>> io;
    std::unique_ptr<AVFormatContext, Freed<avformat_close_input>> format;
    std::unique_ptr<AVCodecContext, Freed<avcodec_free_context>> codec;
    std::unique_ptr<SwrContext, Freed<swr_free>> resampler;
    std::unique_ptr<AVPacket, Freed<av_packet_free>> packet{av_packet_alloc()};
    std::unique_ptr<AVFrame, Freed<av_frame_free>> frame{av_frame_alloc()};
    int stream = -1;
    // What the resampler was made for.
    int inputRate = 0;
    int inputChannels = 0;
    int inputFormat = AV_SAMPLE_FMT_NONE;
    /// What came out of it and was not read yet: less than a slice, and then a frame at most.
    std::vector<std::int16_t> samples;
    bool drained = false;
    bool heardAnything = false;

    void openContainer();
    void openCodec();
    void fitResampler();
    bool nextFrame();
    void decodeMore();
    void resample(const std::uint8_t** input, int count);
};

void SoundFile::State::openContainer() {
    auto* buffer = static_cast<unsigned char*>(av_malloc(ioBufferSize));
    io.reset(avio_alloc_context(buffer, ioBufferSize, 0, &descriptor, readFile, nullptr, seekFile));
    auto* context = avformat_alloc_context();
    context->pb = io.get();
    acceptSoundAlone(*context);
    // Frees the context on failure.
    require(avformat_open_input(&context, nullptr, nullptr, nullptr) == 0, "unknown container");
    format.reset(context);
    require(avformat_find_stream_info(context, nullptr) >= 0, "unreadable container");
}

void SoundFile::State::openCodec() {
    const AVCodec* decoder = nullptr;
    stream = av_find_best_stream(format.get(), AVMEDIA_TYPE_AUDIO, -1, -1, &decoder, 0);
    require(stream >= 0 && decoder, "no audio");
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        if (static_cast<int>(i) != stream) {
            format->streams[i]->discard = AVDISCARD_ALL;
        }
    }
    codec.reset(avcodec_alloc_context3(decoder));
    acceptSoundAlone(*codec);
    require(avcodec_parameters_to_context(codec.get(), format->streams[stream]->codecpar) == 0 &&
                avcodec_open2(codec.get(), decoder, nullptr) == 0,
            "unknown codec");
}

void SoundFile::State::fitResampler() {
    const int channels = frame->ch_layout.nb_channels;
    if (resampler && frame->sample_rate == inputRate && channels == inputChannels &&
        frame->format == inputFormat) {
        return;
    }
    require(channels > 0 && channels <= maximalChannels && frame->sample_rate >= lowestRate &&
                frame->sample_rate <= highestRate,
            "odd audio format");
    AVChannelLayout input{};
    AVChannelLayout mono{};
    av_channel_layout_default(&input, channels);
    av_channel_layout_default(&mono, 1);
    SwrContext* context = nullptr;
    require(swr_alloc_set_opts2(&context, &mono, AV_SAMPLE_FMT_S16, sampleRate, &input,
                                static_cast<AVSampleFormat>(frame->format), frame->sample_rate, 0,
                                nullptr) == 0,
            "odd audio format");
    resampler.reset(context);
    // The usual downmix adds the channels up and clips; this one averages them.
    const std::vector<double> average(static_cast<std::size_t>(channels), 1.0 / channels);
    if (channels > 1) {
        require(swr_set_matrix(context, average.data(), channels) == 0, "odd audio format");
    }
    av_opt_set_int(context, "resampler", SWR_ENGINE_SOXR, 0);
    require(swr_init(context) == 0, "odd audio format");
    inputRate = frame->sample_rate;
    inputChannels = channels;
    inputFormat = frame->format;
}

/// False at the end. Damaged packets are passed over.
bool SoundFile::State::nextFrame() {
    while (true) {
        const int result = avcodec_receive_frame(codec.get(), frame.get());
        if (result == 0) {
            return true;
        }
        if (result == AVERROR_EOF) {
            return false;
        }
        if (result != AVERROR(EAGAIN)) {
            continue;
        }
        if (av_read_frame(format.get(), packet.get()) < 0) {
            avcodec_send_packet(codec.get(), nullptr);
            continue;
        }
        if (packet->stream_index == stream) {
            avcodec_send_packet(codec.get(), packet.get());
        }
        av_packet_unref(packet.get());
    }
}

/// Appends what the resampler makes of `count` more samples, or of what it still held if there is no input.
void SoundFile::State::resample(const std::uint8_t** input, int count) {
    const int room = swr_get_out_samples(resampler.get(), count);
    require(room >= 0, "resampling failed");
    const auto before = samples.size();
    samples.resize(before + static_cast<std::size_t>(room));
    auto* output = reinterpret_cast<std::uint8_t*>(samples.data() + before);
    const int made = swr_convert(resampler.get(), &output, room, input, count);
    require(made >= 0, "resampling failed");
    samples.resize(before + static_cast<std::size_t>(made));
}

void SoundFile::State::decodeMore() {
    if (nextFrame()) {
        fitResampler();
        resample(const_cast<const std::uint8_t**>(frame->extended_data), frame->nb_samples);
        heardAnything = true;
    } else {
        drained = true;
        require(heardAnything, "no audio");
        resample(nullptr, 0);
    }
}

SoundFile::SoundFile(int descriptor)
    : m_state(std::make_unique<State>()) {
    // Its messages quote what stands in the files.
    av_log_set_level(AV_LOG_QUIET);
    m_state->descriptor = descriptor;
    ::lseek(descriptor, 0, SEEK_SET);
    m_state->openContainer();
    m_state->openCodec();
}

SoundFile::~SoundFile() = default;

std::optional<std::chrono::milliseconds> SoundFile::announcedDuration() const {
    const auto duration = m_state->format->duration;
    if (duration == AV_NOPTS_VALUE || duration < 0) {
        return std::nullopt;
    }
    return std::chrono::milliseconds(duration / (AV_TIME_BASE / 1000));
}

std::vector<std::int16_t> SoundFile::read() {
    auto& samples = m_state->samples;
    while (samples.size() < sliceSize && !m_state->drained) {
        m_state->decodeMore();
    }
    const auto end = samples.begin() + static_cast<std::ptrdiff_t>(std::min(samples.size(), sliceSize));
    std::vector<std::int16_t> slice(samples.begin(), end);
    samples.erase(samples.begin(), end);
    return slice;
}

} // namespace velmora::server
