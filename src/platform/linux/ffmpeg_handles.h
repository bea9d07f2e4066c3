#pragma once

#include <memory>
#include <new>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct SwrContext;

namespace velmora {

/// Frees what libav allocated.
struct FfmpegDelete {
    void operator()(AVCodecContext* context) const;
    void operator()(AVFrame* frame) const;
    void operator()(AVPacket* packet) const;
    void operator()(SwrContext* context) const;
};

/// A container that is being written; closes its file.
struct FfmpegDeleteOutput {
    void operator()(AVFormatContext* context) const;
};

/// A container that is being read.
struct FfmpegDeleteInput {
    void operator()(AVFormatContext* context) const;
};

template<typename T>
using FfmpegPtr = std::unique_ptr<T, FfmpegDelete>;
using FfmpegOutput = std::unique_ptr<AVFormatContext, FfmpegDeleteOutput>;
using FfmpegInput = std::unique_ptr<AVFormatContext, FfmpegDeleteInput>;

/// Takes what an allocation of libav gave; throws std::bad_alloc for none.
template<typename T>
[[nodiscard]] FfmpegPtr<T> ownFfmpeg(T* allocated) {
    if (!allocated)
        throw std::bad_alloc();
    return FfmpegPtr<T>(allocated);
}

} // namespace velmora
