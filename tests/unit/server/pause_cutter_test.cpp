#include "speech/pause_cutter.h"
#include "speech/sample_rate.h"

#include <gmock/gmock.h>

#include <cmath>
#include <ctime>
#include <random>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;
using Samples = std::vector<std::int16_t>;

/// Sound that swells and fades like syllables do, so that it has quieter moments but no pause.
Samples speech(std::chrono::milliseconds time, double loudness = 8000) {
    Samples samples(samplesIn(time));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double seconds = static_cast<double>(i) / sampleRate;
        const double syllable = 0.55 + 0.45 * std::sin(seconds * 2 * M_PI * 4);
        samples[i] = static_cast<std::int16_t>(loudness * syllable * std::sin(seconds * 2 * M_PI * 220));
    }
    return samples;
}

Samples noise(std::chrono::milliseconds time, int level) {
    std::mt19937 generator(1);
    std::uniform_int_distribution<int> distribution(-level, level);
    Samples samples(samplesIn(time));
    for (auto& sample : samples) {
        sample = static_cast<std::int16_t>(distribution(generator));
    }
    return samples;
}

Samples join(const std::vector<Samples>& parts) {
    Samples all;
    for (const auto& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

/// Lengths of the pieces in milliseconds.
std::vector<int> cut(const Samples& samples, PieceLimits limits = {}, std::size_t blockSize = 1000) {
    PauseCutter cutter(limits);
    std::vector<int> lengths;
    const auto collect = [&] {
        for (auto piece = cutter.next(); piece; piece = cutter.next()) {
            lengths.push_back(static_cast<int>(piece->size() * 1000 / sampleRate));
        }
    };
    for (std::size_t begin = 0; begin < samples.size(); begin += blockSize) {
        cutter.push(std::span(samples).subspan(begin, std::min(blockSize, samples.size() - begin)));
        collect();
    }
    cutter.finish();
    collect();
    return lengths;
}

TEST(PauseCutter, Nothing_GivesNothing) {
    EXPECT_THAT(cut({}), testing::IsEmpty());
}

TEST(PauseCutter, Silence_GivesNothing) {
    EXPECT_THAT(cut(Samples(samplesIn(60s))), testing::IsEmpty());
    EXPECT_THAT(cut(noise(60s, 15)), testing::IsEmpty());
}

TEST(PauseCutter, Click_GivesNothing) {
    EXPECT_THAT(cut(join({Samples(samplesIn(1s)), speech(20ms), Samples(samplesIn(3s))})),
                testing::IsEmpty());
}

TEST(PauseCutter, PhrasesWithPauses_AreOnePieceEach) {
    const auto silence = Samples(samplesIn(1s));
    const auto pieces = cut(join({silence, speech(2s), silence, speech(3s), silence}));
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_NEAR(pieces[0], 2000 + 600, 100);
    EXPECT_NEAR(pieces[1], 3000 + 600, 100);
}

TEST(PauseCutter, Piece_IsOutAsSoonAsThePauseIsThere) {
    PauseCutter cutter({});
    cutter.push(join({speech(2s), Samples(samplesIn(600ms))}));
    EXPECT_TRUE(cutter.next());
}

TEST(PauseCutter, ShortWordsBetweenPauses_StayTogether) {
    const auto silence = Samples(samplesIn(600ms));
    EXPECT_EQ(cut(join({speech(400ms), silence, speech(400ms), silence})).size(), 1U);
}

TEST(PauseCutter, SpeechWithoutPause_IsCutBelowTheLimit_AndLosesNothing) {
    const auto pieces = cut(speech(100s));
    EXPECT_GE(pieces.size(), 4U);
    int total = 0;
    for (const int length : pieces) {
        EXPECT_LE(length, 30'000);
        EXPECT_GE(length, 1000);
        total += length;
    }
    EXPECT_NEAR(total, 100'000, 25);
}

TEST(PauseCutter, LongSpeech_IsCutAtItsQuietestPlace) {
    const auto pieces = cut(join({speech(25s), speech(300ms, 600), speech(20s)}));
    ASSERT_GE(pieces.size(), 2U);
    EXPECT_NEAR(pieces[0], 25'150, 200);
}

TEST(PauseCutter, NoisyRoom_IsStillCutAtPauses) {
    const auto room = noise(45s, 500);
    auto sound = room;
    for (const auto begin : {10s, 20s, 30s}) {
        const auto voice = speech(4s);
        for (std::size_t i = 0; i < voice.size(); ++i) {
            auto& sample = sound[samplesIn(begin) + i];
            sample = static_cast<std::int16_t>(sample + voice[i]);
        }
    }
    const auto pieces = cut(sound);
    // The first seconds of the hum may count as speech, until the noise is known.
    EXPECT_THAT(pieces.size(), testing::AllOf(testing::Ge(3U), testing::Le(4U)));
    EXPECT_NEAR(pieces.back(), 4600, 300);
}

TEST(PauseCutter, QuietVoice_IsHeard) {
    EXPECT_EQ(cut(join({Samples(samplesIn(1s)), speech(2s, 250), Samples(samplesIn(1s))})).size(), 1U);
}

TEST(PauseCutter, BlockSize_DoesNotMatter) {
    const auto sound =
        join({speech(2s), Samples(samplesIn(1s)), speech(40s), Samples(samplesIn(1s)), speech(1s)});
    const auto expected = cut(sound, {}, sound.size());
    EXPECT_EQ(cut(sound, {}, 1), expected);
    EXPECT_EQ(cut(sound, {}, 777), expected);
}

TEST(PauseCutter, MuchAtOnce_TakesNoLongerThanInBlocks) {
    const auto timeFor = [](const Samples& sound, std::size_t blockSize) {
        const auto begin = std::clock();
        EXPECT_FALSE(cut(sound, {}, blockSize).empty());
        return static_cast<double>(std::clock() - begin);
    };
    // Silence is dropped a frame at a time, speech a piece at a time.
    for (const auto& sound : {join({speech(2s), Samples(samplesIn(5min))}), speech(10min)}) {
        const auto inBlocks = timeFor(sound, samplesIn(500ms));
        EXPECT_LT(timeFor(sound, sound.size()), 10 * inBlocks);
    }
}

TEST(PauseCutter, Stopped_LeavesTheRest) {
    std::stop_source stop;
    PauseCutter cutter({});
    cutter.push(speech(2s), stop.get_token());
    stop.request_stop();
    cutter.push(join({Samples(samplesIn(1s)), speech(2s), Samples(samplesIn(1s))}), stop.get_token());
    EXPECT_FALSE(cutter.next());
}

TEST(PauseCutter, LimitsOfTheRecogniser_AreKept) {
    const auto silence = Samples(samplesIn(1s));
    const PieceLimits patient{.shortest = 8s, .longest = 30s, .pause = 500ms};
    EXPECT_EQ(cut(join({speech(3s), silence, speech(3s), silence}), patient).size(), 1U);
    EXPECT_EQ(cut(join({speech(9s), silence, speech(3s), silence}), patient).size(), 2U);
}

} // namespace
} // namespace velmora::server
