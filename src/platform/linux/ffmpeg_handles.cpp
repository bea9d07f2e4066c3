#include "platform/linux/ffmpeg_handles.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
}

namespace velmora {

void FfmpegDelete::operator()(AVCodecContext* context) const {
    avcodec_free_context(&context);
}

void FfmpegDelete::operator()(AVFrame* frame) const {
    av_frame_free(&frame);
}

void FfmpegDelete::operator()(AVPacket* packet) const {
    av_packet_free(&packet);
}

void FfmpegDelete::operator()(SwrContext* context) const {
    swr_free(&context);
}

void FfmpegDeleteOutput::operator()(AVFormatContext* context) const {
    avio_closep(&context->pb);
    avformat_free_context(context);
}

void FfmpegDeleteInput::operator()(AVFormatContext* context) const {
    avformat_close_input(&context);
}

} // namespace velmora
