#include "speech_files.h"

#include "speech/audio_decoder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace velmora::server {

namespace {

void require(bool condition, const std::string& what) {
    if (!condition) {
        throw std::runtime_error(what + " failed");
    }
}

void encodeTo(const std::filesystem::path& file, const std::vector<std::int16_t>& samples) {
    AVFormatContext* format = nullptr;
    require(avformat_alloc_output_context2(&format, nullptr, "ipod", file.c_str()) >= 0, "muxer");
    auto* codec = avcodec_alloc_context3(avcodec_find_encoder(AV_CODEC_ID_AAC));
    codec->sample_fmt = AV_SAMPLE_FMT_FLTP;
    codec->sample_rate = 16000;
    codec->bit_rate = 64000;
    av_channel_layout_default(&codec->ch_layout, 2);
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
    const auto frameSize = static_cast<std::size_t>(codec->frame_size);
    const auto drain = [&] {
        while (avcodec_receive_packet(codec, packet) == 0) {
            av_packet_rescale_ts(packet, codec->time_base, stream->time_base);
            require(av_write_frame(format, packet) >= 0, "writing");
            av_packet_unref(packet);
        }
    };
    for (std::size_t begin = 0; begin < samples.size(); begin += frameSize) {
        const auto count = std::min(frameSize, samples.size() - begin);
        frame->nb_samples = static_cast<int>(count);
        frame->format = codec->sample_fmt;
        frame->sample_rate = codec->sample_rate;
        frame->pts = static_cast<std::int64_t>(begin);
        av_channel_layout_copy(&frame->ch_layout, &codec->ch_layout);
        require(av_frame_get_buffer(frame, 0) == 0, "frame");
        for (int channel = 0; channel < 2; ++channel) {
            auto* out = reinterpret_cast<float*>(frame->extended_data[channel]);
            for (std::size_t i = 0; i < count; ++i) {
                out[i] = static_cast<float>(samples[begin + i]) / 32768.0F;
            }
        }
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

} // namespace

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
    encodeTo(file, samples);
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace velmora::server
