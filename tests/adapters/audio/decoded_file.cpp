#include "decoded_file.h"

#include <QFile>

#include <memory>
#include <stdexcept>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace velmora::test {
namespace {

struct Close {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};

void check(int code, const char* what) {
    if (code < 0)
        throw std::runtime_error(what);
}

void append(const AVFrame& frame, std::vector<float>& samples) {
    for (int i = 0; i < frame.nb_samples; ++i) {
        for (int channel = 0; channel < frame.ch_layout.nb_channels; ++channel)
            samples.push_back(reinterpret_cast<const float*>(frame.extended_data[channel])[i]);
    }
}

} // namespace

DecodedFile decodeFile(const QString& path) {
    AVFormatContext* opened = nullptr;
    check(avformat_open_input(&opened, QFile::encodeName(path).constData(), nullptr, nullptr), "can't open");
    const std::unique_ptr<AVFormatContext, Close> input(opened);
    check(avformat_find_stream_info(opened, nullptr), "no stream info");
    if (opened->nb_streams != 1)
        throw std::runtime_error("not one stream");
    const AVStream* stream = opened->streams[0];
    const AVCodec* codec = avcodec_find_decoder(stream->codecpar->codec_id);
    const std::unique_ptr<AVCodecContext, Close> decoder(avcodec_alloc_context3(codec));
    check(avcodec_parameters_to_context(decoder.get(), stream->codecpar), "parameters");
    decoder->pkt_timebase = stream->time_base;
    check(avcodec_open2(decoder.get(), codec, nullptr), "can't open the decoder");
    if (decoder->codec_id != AV_CODEC_ID_AAC || decoder->sample_fmt != AV_SAMPLE_FMT_FLTP)
        throw std::runtime_error("not AAC");

    DecodedFile decoded;
    decoded.format = {.sampleRate = double(decoder->sample_rate), .channels = decoder->ch_layout.nb_channels};
    if (stream->duration > 0)
        decoded.statedSeconds = double(stream->duration) * av_q2d(stream->time_base);
    const std::unique_ptr<AVPacket, Close> packet(av_packet_alloc());
    const std::unique_ptr<AVFrame, Close> frame(av_frame_alloc());
    bool more = true;
    while (more) {
        more = av_read_frame(opened, packet.get()) == 0;
        check(avcodec_send_packet(decoder.get(), more ? packet.get() : nullptr), "can't decode");
        av_packet_unref(packet.get());
        while (avcodec_receive_frame(decoder.get(), frame.get()) == 0)
            append(*frame, decoded.samples);
    }
    return decoded;
}

} // namespace velmora::test
