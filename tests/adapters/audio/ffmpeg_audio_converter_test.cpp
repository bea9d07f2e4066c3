#include "foundation/error.h"
#include "platform/linux/ffmpeg_audio_codec.h"
#include "support/desktop/tone.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr double target = 16'000;

/// Everything that comes of a signal handed over in buffers of the given sizes, in turn.
std::vector<float> convertAll(const AudioFormat& from, std::span<const float> samples,
                              const std::vector<std::size_t>& frames) {
    FfmpegAudioCodec codec;
    const auto converter = codec.makeMonoConverter(from, target);
    std::vector<float> converted;
    for (std::size_t turn = 0; !samples.empty(); ++turn) {
        const std::size_t taken =
            std::min(frames[turn % frames.size()] * std::size_t(from.channels), samples.size());
        const std::vector<float> piece =
            converter->convert({.format = from, .samples = samples.first(taken)});
        converted.insert(converted.end(), piece.begin(), piece.end());
        samples = samples.subspan(taken);
    }
    const std::vector<float> rest = converter->flush();
    converted.insert(converted.end(), rest.begin(), rest.end());
    return converted;
}

std::vector<float> convertTone(const AudioFormat& from, double frequency, double amplitude = 0.5) {
    return convertAll(from, makeTone(frequency, amplitude, 2, from), {std::size_t(from.sampleRate / 50)});
}

/// The level of a tone in the middle of what was converted, relative to an amplitude, in dB.
double levelOf(const std::vector<float>& converted, double frequency, double amplitude = 0.5) {
    const auto middle = std::span(converted).subspan(converted.size() / 4, converted.size() / 2);
    return toDecibels(measureTone(middle, frequency, target) / amplitude);
}

} // namespace

class FfmpegAudioConverterRateTest : public testing::TestWithParam<double> {
protected:
    AudioFormat m_from{.sampleRate = GetParam(), .channels = 1};
};

INSTANTIATE_TEST_SUITE_P(Rates, FfmpegAudioConverterRateTest,
                         testing::Values(8'000, 11'025, 16'000, 22'050, 32'000, 44'100, 48'000, 88'200,
                                         96'000, 192'000));

TEST_P(FfmpegAudioConverterRateTest, Convert_TwoSeconds_GivesTwoSeconds) {
    EXPECT_NEAR(double(convertTone(m_from, 440).size()), 2 * target, 2);
}

TEST_P(FfmpegAudioConverterRateTest, Convert_ToneInTheMiddle_KeepsItsLevel) {
    EXPECT_NEAR(levelOf(convertTone(m_from, 1000), 1000), 0, 0.1);
}

TEST_P(FfmpegAudioConverterRateTest, Convert_BuffersOfAnySize_GivesTheSame) {
    const std::vector<float> tone = makeTone(440, 0.5, 1, m_from);
    const std::vector<float> regular = convertAll(m_from, tone, {tone.size()});
    const std::vector<float> odd = convertAll(m_from, tone, {1, 0, 7, 1023, 0, 0, 311});
    ASSERT_EQ(odd.size(), regular.size());
    for (std::size_t i = 0; i < odd.size(); ++i)
        ASSERT_NEAR(odd[i], regular[i], 1e-4) << i;
}

TEST(FfmpegAudioConverter, Convert_HighestToneOfSpeech_IsKept) {
    EXPECT_NEAR(levelOf(convertTone({48'000, 1}, 7'500), 7'500), 0, 1);
    EXPECT_NEAR(levelOf(convertTone({44'100, 1}, 7'500), 7'500), 0, 1);
}

TEST(FfmpegAudioConverter, Convert_ToneAboveTheTarget_IsNotFoldedBack) {
    // 12 kHz would come back as 4 kHz.
    EXPECT_LT(levelOf(convertTone({48'000, 1}, 12'000), 4'000), -60);
    EXPECT_LT(levelOf(convertTone({44'100, 1}, 12'000), 4'000), -60);
    EXPECT_LT(levelOf(convertTone({96'000, 1}, 12'000), 4'000), -60);
}

TEST(FfmpegAudioConverter, Convert_SameSoundOnTwoChannels_IsAveragedNotAdded) {
    EXPECT_NEAR(levelOf(convertTone({48'000, 2}, 1000, 0.8), 1000, 0.8), 0, 0.1);
    EXPECT_NEAR(levelOf(convertTone({16'000, 6}, 1000, 0.8), 1000, 0.8), 0, 0.1);
}

TEST(FfmpegAudioConverter, Convert_SoundOnOneOfTwoChannels_IsHalved) {
    const AudioFormat stereo{.sampleRate = 48'000, .channels = 2};
    std::vector<float> samples = makeTone(1000, 0.8, 2, stereo);
    for (std::size_t i = 1; i < samples.size(); i += 2)
        samples[i] = 0;
    EXPECT_NEAR(levelOf(convertAll(stereo, samples, {960}), 1000, 0.4), 0, 0.1);
}

TEST(FfmpegAudioConverter, Flush_AfterBuffers_GivesWhatTheFilterHeld) {
    FfmpegAudioCodec codec;
    const auto converter = codec.makeMonoConverter({48'000, 1}, target);
    const std::vector<float> tone = makeTone(440, 0.5, 0.02, {48'000, 1});
    const std::size_t first = converter->convert({.format = {48'000, 1}, .samples = tone}).size();
    EXPECT_LT(first, 320U);
    EXPECT_NEAR(double(first + converter->flush().size()), 320, 2);
    EXPECT_THAT(converter->flush(), testing::IsEmpty());
}

TEST(FfmpegAudioConverter, Flush_NothingBefore_GivesNothing) {
    FfmpegAudioCodec codec;
    EXPECT_THAT(codec.makeMonoConverter({48'000, 1}, target)->flush(), testing::IsEmpty());
}

TEST(FfmpegAudioConverter, Convert_BufferOfAnotherFormat_Throws) {
    FfmpegAudioCodec codec;
    const auto converter = codec.makeMonoConverter({48'000, 1}, target);
    const std::vector<float> samples(960);
    EXPECT_THROW(static_cast<void>(converter->convert({.format = {48'000, 2}, .samples = samples})), Error);
}

TEST(FfmpegAudioCodec, MakeMonoConverter_UnusableFormat_Throws) {
    FfmpegAudioCodec codec;
    for (const AudioFormat& from : {AudioFormat{0, 1}, AudioFormat{-48'000, 1}, AudioFormat{48'000, 0},
                                    AudioFormat{1e9, 1}, AudioFormat{NAN, 1}})
        EXPECT_THROW(static_cast<void>(codec.makeMonoConverter(from, target)), Error);
    EXPECT_THROW(static_cast<void>(codec.makeMonoConverter({48'000, 1}, 0)), Error);
}
