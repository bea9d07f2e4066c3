#include "speech/audio_decoder.h"
#include "speech/sample_rate.h"
#include "speech/temp_file.h"
#include "speech/wav.h"
#include "speech_files.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <cmath>

namespace velmora::server {
namespace {

using Samples = std::vector<std::int16_t>;

class AudioDecoderTest : public testing::Test {
protected:
    Samples decode(const std::string& bytes) {
        TempFile file(folder.path());
        file.append(bytes);
        AudioDecoder decoder(file.descriptor());
        Samples all;
        for (auto samples = decoder.read(); !samples.empty(); samples = decoder.read()) {
            all.insert(all.end(), samples.begin(), samples.end());
        }
        return all;
    }

    TestFolder folder;
};

Samples sine(std::size_t count, double amplitude) {
    Samples samples(count);
    for (std::size_t i = 0; i < count; ++i) {
        samples[i] = static_cast<std::int16_t>(
            amplitude * std::sin(static_cast<double>(i) * 2 * M_PI * 440 / sampleRate));
    }
    return samples;
}

/// A WAV header with another number of channels and another rate than wavFile writes.
std::string wavWith(const Samples& interleaved, std::uint16_t channels, std::uint32_t rate) {
    auto bytes = wavFile(interleaved);
    const auto put = [&](std::size_t at, auto value) {
        std::memcpy(bytes.data() + at, &value, sizeof value);
    };
    put(22, channels);
    put(24, rate);
    put(28, static_cast<std::uint32_t>(rate * channels * 2));
    put(32, static_cast<std::uint16_t>(channels * 2));
    return bytes;
}

int peak(const Samples& samples) {
    int highest = 0;
    for (const auto sample : samples) {
        highest = std::max(highest, std::abs(static_cast<int>(sample)));
    }
    return highest;
}

TEST_F(AudioDecoderTest, OwnFormat_ComesOutAsItWas) {
    const auto samples = sine(samplesIn(std::chrono::seconds(1)), 10'000);
    EXPECT_EQ(decode(wavFile(samples)), samples);
}

TEST_F(AudioDecoderTest, OtherRate_IsResampledWithItsLevel) {
    const auto samples = sine(48'000, 10'000);
    const auto decoded = decode(wavWith(samples, 1, 48'000));
    EXPECT_NEAR(static_cast<double>(decoded.size()), 16'000, 20);
    EXPECT_NEAR(peak(decoded), 10'000, 200);
}

TEST_F(AudioDecoderTest, Channels_AreAveragedNotAdded) {
    Samples interleaved;
    for (const auto sample : sine(16'000, 30'000)) {
        interleaved.insert(interleaved.end(), {sample, sample});
    }
    EXPECT_NEAR(peak(decode(wavWith(interleaved, 2, 16'000))), 30'000, 100);
    for (std::size_t i = 1; i < interleaved.size(); i += 2) {
        interleaved[i] = 0;
    }
    EXPECT_NEAR(peak(decode(wavWith(interleaved, 2, 16'000))), 15'000, 100);
}

TEST_F(AudioDecoderTest, FragmentedM4a_IsDecoded) {
    const auto file = folder.path() / "speech.m4a";
    speakToM4a("hello world", file);
    speakToWav("hello world", folder.path() / "speech.wav");
    const auto expected = decode(readFile(folder.path() / "speech.wav"));
    const auto decoded = decode(readFile(file));
    EXPECT_NEAR(static_cast<double>(decoded.size()), static_cast<double>(expected.size()), 2100);
    EXPECT_NEAR(peak(decoded), peak(expected), peak(expected) * 0.15);
}

TEST_F(AudioDecoderTest, FileCutShort_GivesWhatItHas) {
    const auto file = folder.path() / "speech.m4a";
    speakToM4a("this is a sentence of some length so that there is more than one fragment", file);
    const auto bytes = readFile(file);
    EXPECT_GT(decode(bytes.substr(0, bytes.size() * 2 / 3)).size(), samplesIn(std::chrono::seconds(1)));
}

TEST_F(AudioDecoderTest, WhatIsNoAudio_IsRefused) {
    const std::string playlist =
        "#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\nfile:///etc/passwd\n#EXT-X-ENDLIST\n";
    const std::string concat = "ffconcat version 1.0\nfile /etc/passwd\n";
    for (const auto& bytes : {std::string(), std::string("hello"), std::string(100'000, '\0'), playlist,
                              concat, wavFile(Samples(100)).substr(0, 30)}) {
        EXPECT_THROW(decode(bytes), AudioError) << bytes.substr(0, 20);
    }
}

} // namespace
} // namespace velmora::server
