#include "platform/linux/ffmpeg_audio_converter.h"

#include "platform/linux/ffmpeg_error.h"

#include <cmath>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace velmora {
namespace {

constexpr double minRate = 1'000;
constexpr double maxRate = 768'000;

QString subject() {
    return QStringLiteral("sample rate conversion");
}

bool isUsable(double rate) {
    return rate >= minRate && rate <= maxRate;
}

} // namespace

FfmpegAudioConverter::FfmpegAudioConverter(const AudioFormat& from, double targetRate)
    : m_from(from) {
    if (!isUsable(from.sampleRate) || !isUsable(targetRate) || from.channels < 1)
        throw PlainError(QStringLiteral("%1: %2 Hz with %3 channels to %4 Hz")
                             .arg(subject())
                             .arg(from.sampleRate)
                             .arg(from.channels)
                             .arg(targetRate));
    AVChannelLayout mono{};
    av_channel_layout_default(&mono, 1);
    SwrContext* allocated = nullptr;
    checkFfmpeg(subject(),
                swr_alloc_set_opts2(&allocated, &mono, AV_SAMPLE_FMT_FLT, int(std::lround(targetRate)), &mono,
                                    AV_SAMPLE_FMT_FLT, int(std::lround(from.sampleRate)), 0, nullptr));
    m_resampler = ownFfmpeg(allocated);
    checkFfmpeg(subject(), av_opt_set_int(allocated, "resampler", SWR_ENGINE_SOXR, 0));
    checkFfmpeg(subject(), swr_init(allocated));
}

std::vector<float> FfmpegAudioConverter::convert(const AudioBuffer& buffer) {
    if (buffer.format != m_from)
        throw PlainError(QStringLiteral("%1: the input has changed its format").arg(subject()));
    const int frames = buffer.frames();
    if (frames == 0)
        return {};
    const auto channels = std::size_t(m_from.channels);
    if (channels == 1)
        return resample(buffer.samples.data(), frames);
    // The library's own mix to one channel adds where it should average.
    std::vector<float> mono(std::size_t(frames), 0.0F);
    for (std::size_t i = 0; i < mono.size(); ++i) {
        for (std::size_t channel = 0; channel < channels; ++channel)
            mono[i] += buffer.samples[i * channels + channel];
        mono[i] /= float(channels);
    }
    return resample(mono.data(), frames);
}

std::vector<float> FfmpegAudioConverter::flush() {
    std::vector<float> rest;
    while (true) {
        const std::vector<float> piece = resample(nullptr, 0);
        if (piece.empty())
            return rest;
        rest.insert(rest.end(), piece.begin(), piece.end());
    }
}

std::vector<float> FfmpegAudioConverter::resample(const float* mono, int frames) {
    const int room = checkFfmpeg(subject(), swr_get_out_samples(m_resampler.get(), frames));
    std::vector<float> converted(std::size_t(room) + 1024);
    auto* out = reinterpret_cast<std::uint8_t*>(converted.data());
    const auto* in = reinterpret_cast<const std::uint8_t*>(mono);
    const int made = checkFfmpeg(
        subject(), swr_convert(m_resampler.get(), &out, int(converted.size()), mono ? &in : nullptr, frames));
    converted.resize(std::size_t(made));
    return converted;
}

} // namespace velmora
