#include "attack_files.h"
#include "processes.h"
#include "speech/audio_decoder.h"
#include "speech/sample_rate.h"
#include "speech/temp_file.h"
#include "speech/wav.h"
#include "speech_files.h"
#include "test_folder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <future>
#include <numeric>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;
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

int peak(const Samples& samples) {
    int highest = 0;
    for (const auto sample : samples) {
        highest = std::max(highest, std::abs(static_cast<int>(sample)));
    }
    return highest;
}

/// Root mean square.
double loudness(const Samples& samples) {
    const auto sum =
        std::accumulate(samples.begin(), samples.end(), 0.0, [](double total, std::int16_t sample) {
            return total + static_cast<double>(sample) * sample;
        });
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

TEST_F(AudioDecoderTest, OwnFormat_ComesOutAsItWas) {
    const auto samples = sine(samplesIn(10s) + 77, 10'000);
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

TEST_F(AudioDecoderTest, WhatRecordersWrite_IsDecoded) {
    const auto samples = sine(samplesIn(3s), 10'000);
    for (const Encoding& encoding : std::vector<Encoding>{
             {.container = "ipod", .codec = "aac", .channels = 2},
             {.container = "mp4", .codec = "aac", .rate = 44'100},
             {.container = "ipod", .codec = "alac"},
             {.container = "adts", .codec = "aac", .rate = 48'000},
             {.container = "wav", .codec = "pcm_s16le", .rate = 8000},
             {.container = "wav", .codec = "pcm_s24le", .rate = 96'000, .channels = 2},
             {.container = "wav", .codec = "pcm_mulaw", .rate = 8000},
             {.container = "w64", .codec = "pcm_f32le", .rate = 192'000},
             {.container = "aiff", .codec = "pcm_s16be", .rate = 44'100},
             {.container = "au", .codec = "pcm_s16be"},
             {.container = "caf", .codec = "pcm_s16le"},
             {.container = "mov", .codec = "pcm_s16le", .rate = 48'000},
             {.container = "flac", .codec = "flac", .rate = 48'000, .channels = 2},
             {.container = "matroska", .codec = "flac"},
             {.container = "mp3", .codec = "libmp3lame", .rate = 44'100},
             {.container = "ogg", .codec = "libopus", .rate = 48'000},
             {.container = "ogg", .codec = "libvorbis", .rate = 44'100},
             {.container = "webm", .codec = "libopus", .rate = 48'000},
         }) {
        const auto file = folder.path() / "sound";
        encode(samples, encoding, file);
        const auto decoded = decode(readFile(file));
        const auto name = encoding.codec + " in " + encoding.container;
        EXPECT_NEAR(static_cast<double>(decoded.size()), static_cast<double>(samples.size()), 2500) << name;
        EXPECT_NEAR(loudness(decoded), loudness(samples), loudness(samples) * 0.1) << name;
    }
}

TEST_F(AudioDecoderTest, FileCutShort_GivesWhatItHas) {
    const auto file = folder.path() / "speech.m4a";
    speakToM4a("this is a sentence of some length so that there is more than one fragment", file);
    const auto bytes = readFile(file);
    EXPECT_GT(decode(bytes.substr(0, bytes.size() * 2 / 3)).size(), samplesIn(1s));
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

TEST_F(AudioDecoderTest, ContainersAndCodecsThatNobodyRecordsWith_AreRefused) {
    const auto samples = sine(samplesIn(1s), 10'000);
    for (const Encoding& encoding :
         std::vector<Encoding>{{.container = "avi", .codec = "pcm_s16le"},
                               {.container = "mov", .codec = "ac3", .rate = 48'000},
                               {.container = "matroska", .codec = "wmav2", .rate = 48'000}}) {
        const auto file = folder.path() / "sound";
        encode(samples, encoding, file);
        EXPECT_THROW(decode(readFile(file)), AudioError) << encoding.codec << " in " << encoding.container;
    }
}

TEST_F(AudioDecoderTest, RatesThatNoMicrophoneHas_AreRefused) {
    const Samples samples(samplesIn(1s), 100);
    EXPECT_THROW(decode(wavWith(samples, 1, 3999)), AudioError);
    EXPECT_NEAR(static_cast<double>(decode(wavWith(samples, 1, 4000)).size()), samplesIn(4s), 20);
    EXPECT_NEAR(static_cast<double>(decode(wavWith(samples, 1, 192'000)).size()), samples.size() / 12., 20);
    EXPECT_THROW(decode(wavWith(samples, 1, 192'001)), AudioError);
    EXPECT_THROW(decode(wavWith(samples, 1, 0x7FFFFFFF)), AudioError);
}

TEST_F(AudioDecoderTest, MoreChannelsThanMicrophonesHave_AreRefused) {
    const Samples samples(16 * 17 * 100, 100);
    EXPECT_FALSE(decode(wavWith(samples, 16, 16'000)).empty());
    EXPECT_THROW(decode(wavWith(samples, 17, 16'000)), AudioError);
}

/// What the children that were waited for since the last call took of the processor.
class Usage {
public:
    [[nodiscard]] double processorSeconds() {
        const auto now = total();
        return now - std::exchange(m_before, now);
    }

    static rusage of(__rusage_who who) {
        rusage now{};
        ::getrusage(who, &now);
        return now;
    }

private:
    static double total() {
        const auto now = of(RUSAGE_CHILDREN);
        return static_cast<double>(now.ru_utime.tv_sec + now.ru_stime.tv_sec) +
               static_cast<double>(now.ru_utime.tv_usec + now.ru_stime.tv_usec) / 1e6;
    }

    double m_before = total();
};

TEST_F(AudioDecoderTest, Attacks_CostLittle) {
    const std::vector<std::pair<std::string, std::string>> attacks{
        {"nine hours in a frame", constantFlac(2)},
        {"two hours in a frame", constantFlac(8)},
        {"hours of a WAV file", wavWith(Samples(samplesIn(10s), 100), 1, 1)},
        {"a picture of two gigabytes", filmOfOnePng(16'000, 14'000)},
        {"an index of 100 gigabytes", filmOfManySamples(0xFFFFFFFF)},
        {"an index of 2 gigabytes", filmOfManySamples(0x04000000)},
    };
    for (const auto& [name, bytes] : attacks) {
        Usage usage;
        double seconds = 0;
        try {
            seconds = static_cast<double>(decode(bytes).size()) / sampleRate;
        } catch (const AudioError&) {
        }
        EXPECT_LE(usage.processorSeconds(), 1.2 + 1.2 * seconds) << name;
    }
    // A child begins with the memory of its parent, which the sanitizers make large.
    EXPECT_LE(Usage::of(RUSAGE_CHILDREN).ru_maxrss, std::max(256L * 1024, Usage::of(RUSAGE_SELF).ru_maxrss));
}

/// Looks at the process that decodes. The sound is long enough that it has to wait for its reader.
class DecoderProcessTest : public AudioDecoderTest {
protected:
    DecoderProcessTest() {
        file.append(wavFile(sine(samplesIn(60s), 10'000)));
        decoder.emplace(file.descriptor());
        EXPECT_TRUE(decoder->ready(30s));
        const auto all = children();
        EXPECT_EQ(all.size(), 1U);
        process = all.at(0);
    }

    TempFile file{folder.path()};
    std::optional<AudioDecoder> decoder;
    pid_t process = 0;
};

TEST_F(DecoderProcessTest, HasItsInputAndOutput_AndNothingElseOfOurs) {
    const TempFile another(folder.path());
    ASSERT_EQ(::fcntl(another.descriptor(), F_SETFD, 0), 0);
    ::setenv("VELMORA_TEST_SECRET", "secret", 1);
    decoder.emplace(file.descriptor());
    ASSERT_TRUE(decoder->ready(30s));
    process = children().at(0);
    std::map<std::string, std::string> open;
    for (const auto& entry :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd")) {
        open[entry.path().filename()] = std::filesystem::read_symlink(entry.path());
    }
    EXPECT_THAT(open, testing::ElementsAre(testing::Pair("0", testing::StartsWith(folder.path().string())),
                                           testing::Pair("1", testing::StartsWith("pipe:")),
                                           testing::Pair("2", "/dev/null")));
    EXPECT_EQ(readFile("/proc/" + std::to_string(process) + "/environ"), "");
}

TEST_F(DecoderProcessTest, EndsWhenItIsTold_ThoughTheServerKeepsThatForOneThread) {
    sigset_t ends;
    sigset_t before;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ends, &before);
    decoder.emplace(file.descriptor());
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ASSERT_TRUE(decoder->ready(30s));
    process = children().at(0);
    ::kill(process, SIGTERM);
    expectEnd(process);
}

TEST_F(DecoderProcessTest, IsConfined) {
    // Where cores were not to be made anyway, that is no test of one limit.
    rlimit cores{};
    ::getrlimit(RLIMIT_CORE, &cores);
    const rlimit most{RLIM_INFINITY, RLIM_INFINITY};
    ::setrlimit(RLIMIT_CORE, &most);
    decoder.emplace(file.descriptor());
    ASSERT_TRUE(decoder->ready(30s));
    process = children().at(0);
    ::setrlimit(RLIMIT_CORE, &cores);
    auto status = statusOf(process);
    EXPECT_EQ(status["NoNewPrivs"], "1");
    if (statusOf(::getpid()).contains("Seccomp")) {
        EXPECT_EQ(status["Seccomp"], "2");
    }
    EXPECT_EQ(limitOf(process, "Max open files"), "0");
    EXPECT_EQ(limitOf(process, "Max file size"), "0");
    EXPECT_EQ(limitOf(process, "Max core file size"), "0");
    EXPECT_EQ(limitOf(process, "Max cpu time"), "1");
    EXPECT_NE(limitOf(process, "Max address space"), "unlimited");
}

TEST_F(DecoderProcessTest, ProcessorTime_IsEarnedWithSound) {
    for (std::size_t heard = 0; heard < samplesIn(7s);) {
        heard += decoder->read().size();
    }
    EXPECT_EQ(limitOf(process, "Max cpu time"), "8");
}

TEST_F(DecoderProcessTest, EndsWithItsDecoder) {
    decoder.reset();
    EXPECT_FALSE(isRunning(process));
    EXPECT_EQ(statusOf(process)["Pid"], "") << "nobody waited for it";
}

TEST_F(DecoderProcessTest, Stopped_EndsAtOnce_AndSoDoesTheRead) {
    // It would never come to writing anything.
    ::kill(process, SIGSTOP);
    std::stop_source stop;
    auto rest = std::async(std::launch::async, [&] {
        while (!decoder->read(stop.get_token()).empty()) {
        }
    });
    EXPECT_EQ(rest.wait_for(200ms), std::future_status::timeout);
    stop.request_stop();
    EXPECT_EQ(rest.wait_for(30s), std::future_status::ready);
    expectEnd(process);
    ::kill(process, SIGKILL);
    rest.wait();
    EXPECT_TRUE(decoder->read().empty());
}

TEST_F(DecoderProcessTest, Crash_IsTheFilesFault) {
    static_cast<void>(decoder->read());
    ::kill(process, SIGSEGV);
    EXPECT_THROW(while (!decoder->read().empty()){}, AudioError);
    EXPECT_TRUE(decoder->read().empty());
}

TEST_F(DecoderProcessTest, EndsWithTheServer) {
    // Stopped, so that it isn't the broken pipe that ends it.
    decoder.reset();
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const pid_t server = ::fork();
    if (server == 0) {
        AudioDecoder another(file.descriptor());
        static_cast<void>(another.ready(30s));
        ::kill(children().at(0), SIGSTOP);
        ::write(ends[1], "r", 1);
        ::pause();
    }
    char ready = 0;
    ASSERT_EQ(::read(ends[0], &ready, 1), 1);
    process = childrenOf(server).at(0);
    ::kill(server, SIGKILL);
    ::waitpid(server, nullptr, 0);
    expectEnd(process);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace velmora::server
