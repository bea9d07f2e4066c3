#include "decoded_file.h"
#include "foundation/error.h"
#include "platform/linux/ffmpeg_audio_codec.h"
#include "support/desktop/tone.h"
#include "support/file_size_limit.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace velmora;
using namespace velmora::test;

namespace {

constexpr AudioFormat dictation{.sampleRate = 16'000, .channels = 1};
constexpr double frame = 1024.0 / 16'000; // seconds of one of the encoder's frames

class FfmpegAudioFileTest : public testing::Test {
protected:
    std::unique_ptr<AudioFile> open(const AudioFileSettings& settings) {
        return m_codec.openForWriting(m_path, settings);
    }
    /// A finished file of a tone of amplitude 0.5.
    DecodedFile record(const AudioFileSettings& settings, double frequency, double seconds) {
        open(settings)->write(makeTone(frequency, 0.5, seconds, settings.format));
        return decodeFile(m_path);
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"velmora-1767225600.m4a"_s);
    FfmpegAudioCodec m_codec;
};

/// The middle, away from the fade of the codec's first and last frame.
std::span<const float> middleOf(const std::vector<float>& samples) {
    return std::span(samples).subspan(samples.size() / 4, samples.size() / 2);
}

long residentBytes() {
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QFile::ReadOnly))
        throw std::runtime_error("no /proc/self/statm");
    return file.readAll().split(' ').at(1).toLong() * sysconf(_SC_PAGESIZE);
}

} // namespace

class FfmpegAudioFileBitRateTest : public FfmpegAudioFileTest, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(BitRates, FfmpegAudioFileBitRateTest, testing::Values(64'000, 48'000, 32'000));

TEST_P(FfmpegAudioFileBitRateTest, Write_Tone_DecodesToTheSame) {
    const DecodedFile decoded = record({.format = dictation, .bitRate = GetParam()}, 1000, 3.3);
    EXPECT_EQ(decoded.format, dictation);
    EXPECT_NEAR(decoded.seconds(), 3.3, frame);
    EXPECT_NEAR(decoded.statedSeconds, 3.3, frame);
    EXPECT_NEAR(toDecibels(measureTone(middleOf(decoded.samples), 1000, 16'000) / 0.5), 0, 0.2);
}

TEST_P(FfmpegAudioFileBitRateTest, Write_Noise_FileHasTheSizeOfItsRate) {
    std::uint32_t state = 1;
    std::vector<float> noise(16'000 * 20);
    for (float& sample : noise)
        sample = float(state = state * 1'664'525 + 1'013'904'223) / 4.3e9F - 0.5F;
    open({.format = dictation, .bitRate = GetParam()})->write(noise);
    EXPECT_NEAR(double(QFileInfo(m_path).size()) * 8 / 20, GetParam(), 0.1 * GetParam());
}

TEST_F(FfmpegAudioFileTest, Write_Quality_DecodesToTheSame) {
    const DecodedFile decoded = record({.format = dictation, .quality = 96}, 1000, 3);
    EXPECT_NEAR(decoded.seconds(), 3, frame);
    EXPECT_NEAR(toDecibels(measureTone(middleOf(decoded.samples), 1000, 16'000) / 0.5), 0, 0.2);
}

TEST_F(FfmpegAudioFileTest, Write_NeitherRateNorQuality_DecodesToTheSame) {
    const DecodedFile decoded = record({.format = dictation}, 1000, 3);
    EXPECT_NEAR(toDecibels(measureTone(middleOf(decoded.samples), 1000, 16'000) / 0.5), 0, 0.2);
}

TEST_F(FfmpegAudioFileTest, Write_TwoChannels_KeepsThemApart) {
    constexpr AudioFormat stereo{.sampleRate = 16'000, .channels = 2};
    std::vector<float> samples = makeTone(1000, 0.5, 3, stereo);
    for (std::size_t i = 1; i < samples.size(); i += 2)
        samples[i] = 0;
    auto file = open({.format = stereo, .bitRate = 64'000});
    file->write(samples);
    file.reset();
    const DecodedFile decoded = decodeFile(m_path);
    EXPECT_EQ(decoded.format, stereo);
    EXPECT_NEAR(measureTone(middleOf(takeChannel(decoded.samples, 0, 2)), 1000, 16'000), 0.5, 0.01);
    EXPECT_LT(measureTone(middleOf(takeChannel(decoded.samples, 1, 2)), 1000, 16'000), 0.005);
}

TEST_F(FfmpegAudioFileTest, Write_OddPiecesAndNothing_GiveOneStreamWithoutGaps) {
    const std::vector<float> tone = makeTone(440, 0.5, 4, dictation);
    auto file = open({.format = dictation, .bitRate = 64'000});
    std::span<const float> left(tone);
    for (std::size_t size = 0; !left.empty(); size = (size + 331) % 3001) {
        const std::size_t taken = std::min(size, left.size());
        file->write(left.first(taken));
        left = left.subspan(taken);
    }
    file.reset();
    const DecodedFile decoded = decodeFile(m_path);
    ASSERT_NEAR(decoded.seconds(), 4, frame);
    // The priming is cut off: what is decoded lies where it was written.
    double error = 0;
    for (std::size_t i = 2'048; i < tone.size() - 2'048; ++i)
        error = std::max(error, std::abs(double(decoded.samples[i] - tone[i])));
    EXPECT_LT(error, 0.02);
}

TEST_F(FfmpegAudioFileTest, Destruction_OneSampleWritten_LeavesAFile) {
    auto file = open({.format = dictation, .bitRate = 64'000});
    file->write(std::vector{0.25F});
    file.reset();
    EXPECT_LE(decodeFile(m_path).seconds(), 2 * frame);
}

TEST_F(FfmpegAudioFileTest, Destruction_NothingWritten_LeavesAFileAndNothingBesides) {
    open({.format = dictation, .bitRate = 64'000}).reset();
    EXPECT_THAT(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden),
                testing::ElementsAre(QFileInfo(m_path).fileName()));
}

TEST_F(FfmpegAudioFileTest, Destruction_AfterWriting_LeavesNothingBesides) {
    record({.format = dictation, .bitRate = 64'000}, 440, 2.5);
    EXPECT_THAT(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden),
                testing::ElementsAre(QFileInfo(m_path).fileName()));
}

TEST_F(FfmpegAudioFileTest, Destruction_AfterWriting_LeavesAPlainFileThatCanBeStreamed) {
    record({.format = dictation, .bitRate = 64'000}, 440, 5);
    QFile file(m_path);
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_FALSE(bytes.contains("moof"));
    EXPECT_LT(bytes.indexOf("moov"), bytes.indexOf("mdat"));
}

TEST_F(FfmpegAudioFileTest, Destruction_NoRoomForThePlainFile_LeavesTheFragmentedOne) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u".velmora-1767225600.m4a.part"_s));
    const DecodedFile decoded = record({.format = dictation, .bitRate = 64'000}, 1000, 5);
    EXPECT_NEAR(decoded.seconds(), 5, 2 * frame); // the last ones are not cut to length
    EXPECT_NEAR(measureTone(middleOf(decoded.samples), 1000, 16'000), 0.5, 0.01);
}

TEST_F(FfmpegAudioFileTest, OpenForWriting_Always_MakesAFileForItsOwnerAlone) {
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    auto file = open({.format = dictation, .bitRate = 64'000});
    EXPECT_FALSE(QFile(m_path).permissions() & others);
    file->write(makeTone(440, 0.5, 2, dictation));
    file.reset();
    EXPECT_FALSE(QFile(m_path).permissions() & others);
}

TEST_F(FfmpegAudioFileTest, OpenForWriting_FileThere_ReplacesIt) {
    record({.format = dictation, .bitRate = 64'000}, 440, 9);
    EXPECT_NEAR(record({.format = dictation, .bitRate = 64'000}, 440, 2).seconds(), 2, frame);
}

TEST_F(FfmpegAudioFileTest, OpenForWriting_NameWithColonAndCyrillic_IsAFile) {
    m_path = m_folder.filePath(u"запись: 12:30.m4a"_s);
    EXPECT_NEAR(record({.format = dictation, .bitRate = 64'000}, 440, 2).seconds(), 2, frame);
}

TEST_F(FfmpegAudioFileTest, OpenForWriting_NoSuchFolder_ThrowsWithPathAndReason) {
    m_path = u"/no/such/folder/a.m4a"_s;
    try {
        static_cast<void>(open({.format = dictation, .bitRate = 64'000}));
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.localizedDescription(), u"/no/such/folder/a.m4a: No such file or directory"_s);
    }
}

TEST_F(FfmpegAudioFileTest, OpenForWriting_AbsurdSettings_ThrowsAndLeavesNoFile) {
    const AudioFileSettings absurd[] = {
        {.format = {.sampleRate = 16'000, .channels = 0}},
        {.format = {.sampleRate = 16'000, .channels = 99}},
        {.format = {.sampleRate = 0, .channels = 1}},
        {.format = {.sampleRate = 12'345, .channels = 1}},
        {.format = {.sampleRate = -16'000, .channels = 1}},
        {.format = dictation, .bitRate = 0},
        {.format = dictation, .bitRate = -64'000},
        {.format = dictation, .bitRate = 500'000},
        {.format = dictation, .quality = -1},
        {.format = dictation, .quality = 128},
        {.format = dictation, .bitRate = 64'000, .quality = 96},
    };
    for (const AudioFileSettings& settings : absurd)
        EXPECT_THROW(static_cast<void>(open(settings)), Error);
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
}

TEST_F(FfmpegAudioFileTest, Write_HalfAFrameOfChannels_Throws) {
    const auto file = open({.format = {.sampleRate = 16'000, .channels = 2}});
    EXPECT_THROW(file->write(std::vector<float>(3)), Error);
}

TEST_F(FfmpegAudioFileTest, Write_DiskFull_ThrowsWithReason) {
    ASSERT_TRUE(QFile::link(u"/dev/full"_s, m_path));
    const auto file = open({.format = dictation, .bitRate = 64'000});
    try {
        file->write(makeTone(440, 0.5, 10, dictation));
        FAIL();
    } catch (const Error& error) {
        EXPECT_THAT(error.localizedDescription().toStdString(), testing::HasSubstr("нет места на диске"));
    }
}

TEST_F(FfmpegAudioFileTest, Write_ProcessKilledInTheMiddle_LosesAboutASecond) {
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t writer = fork();
    if (writer == 0) {
        const auto file = open({.format = dictation, .bitRate = 64'000});
        for (int i = 0; i < 1050; ++i)
            file->write(makeTone(1000, 0.5, 0.01, dictation));
        const char done = 1;
        if (::write(pipe[1], &done, 1) == 1)
            pause();
        _exit(1);
    }
    close(pipe[1]);
    char done = 0;
    ASSERT_EQ(::read(pipe[0], &done, 1), 1);
    close(pipe[0]);
    ASSERT_EQ(kill(writer, SIGKILL), 0);
    ASSERT_EQ(waitpid(writer, nullptr, 0), writer);

    const DecodedFile decoded = decodeFile(m_path);
    EXPECT_EQ(decoded.format, dictation);
    EXPECT_GT(decoded.seconds(), 10.5 - 1.0 - 3 * frame);
    EXPECT_LE(decoded.seconds(), 10.5);
    EXPECT_NEAR(measureTone(middleOf(decoded.samples), 1000, 16'000), 0.5, 0.01);
}

TEST_F(FfmpegAudioFileTest, Write_TenMinutes_MemoryStaysFlat) {
    constexpr int minute = 60;
#ifdef __SANITIZE_ADDRESS__
    constexpr long allowed = 300L << 20; // the sanitizer keeps what was freed
#else
    constexpr long allowed = 5L << 20;
#endif
    const std::vector<float> second = makeTone(440, 0.5, 1, dictation);
    auto file = open({.format = dictation, .bitRate = 64'000});
    for (int i = 0; i < 10; ++i)
        file->write(second);
    const long before = residentBytes();
    for (int i = 10; i < 10 * minute; ++i)
        file->write(second);
    EXPECT_LT(residentBytes() - before, allowed);
    file.reset();
    EXPECT_LT(residentBytes() - before, allowed);
    EXPECT_NEAR(decodeFile(m_path).seconds(), 10 * minute, frame);
}

TEST_F(FfmpegAudioFileTest, Finish_FullDisk_SaysWhichAndLeavesNoFile) {
    ASSERT_TRUE(QFile::link(u"/dev/full"_s, m_path));
    const auto file = open({.format = dictation, .bitRate = 64'000});
    try {
        file->write(makeTone(1000, 0.5, 3, dictation));
        ADD_FAILURE() << "the disk took it";
    } catch (const Error&) {
    }
    try {
        file->finish();
        ADD_FAILURE() << "the disk took it";
    } catch (const Error& error) {
        EXPECT_EQ(error.localizedDescription(),
                  u"нет места на диске "_s + QStorageInfo(m_folder.path()).rootPath());
    }
    EXPECT_FALSE(QFileInfo(m_path).isSymLink());
}

// Shorter than a fragment: nothing was refused before the end.
TEST_F(FfmpegAudioFileTest, Finish_FullDiskAndAShortRecording_SaysSoAsWell) {
    ASSERT_TRUE(QFile::link(u"/dev/full"_s, m_path));
    const auto file = open({.format = dictation, .bitRate = 64'000});
    EXPECT_NO_THROW(file->write(makeTone(1000, 0.5, 0.5, dictation)));
    EXPECT_THROW(file->finish(), Error);
    EXPECT_FALSE(QFileInfo(m_path).isSymLink());
}

TEST_F(FfmpegAudioFileTest, Finish_DiskThatFilledUp_KeepsWhatItTook) {
    const auto file = open({.format = dictation, .bitRate = 64'000});
    {
        const FileSizeLimit full(40'000); // five seconds
        for (int second = 0; second < 10; ++second) {
            try {
                file->write(makeTone(1000, 0.5, 1, dictation));
            } catch (const Error&) {
            }
        }
        EXPECT_THROW(file->finish(), Error);
    }
    const DecodedFile decoded = decodeFile(m_path);
    EXPECT_GT(decoded.seconds(), 3);
    EXPECT_LT(decoded.seconds(), 8);
    EXPECT_NEAR(measureTone(middleOf(decoded.samples), 1000, 16'000), 0.5, 0.01);
}
