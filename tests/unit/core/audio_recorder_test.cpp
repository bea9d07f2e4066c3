#include "core/audio_recorder.h"
#include "core/level_meter.h"
#include "core/pcm16.h"
#include "support/fake_audio.h"
#include "support/hand_loop.h"
#include "support/other_process.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QtEndian>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::FloatEq;
using testing::SizeIs;

namespace {

class AudioRecorderTest : public testing::Test {
protected:
    void speak(const std::vector<float>& samples) {
        engine.speak(samples);
        loop.runPosted();
    }

    HandLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    FakeAudioEngine engine;
    FakeAudioCodec codec;
    ProcessFolder recordings{folder.path(), QStringLiteral("recordings")};
    AudioRecorder recorder{loop, defaults, engine, codec, recordings};
    const std::vector<float> fullScale = std::vector<float>(960, 1.0F);
};

float levelOfMono(const std::vector<float>& samples) {
    return levelOf({{16000, 1}, samples});
}

} // namespace

TEST_F(AudioRecorderTest, Start_NamesTheFileAfterTheUnixTimeAndOpensIt) {
    const QString path = recorder.start();
    EXPECT_EQ(path, recordings.path() + QStringLiteral("/velmora-1767225600.m4a"));
    EXPECT_EQ(recorder.lastFileURL(), path);
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_EQ(codec.openFiles, 1);
    EXPECT_EQ(codec.attempts.front().format, (AudioFormat{16000, 1}));
    EXPECT_EQ(codec.attempts.front().bitRate, 64000);
}

TEST_F(AudioRecorderTest, StartWhileRecording_GivesTheSameFileAndNoSecondStart) {
    const QString path = recorder.start();
    loop.advance(5s);
    EXPECT_EQ(recorder.start(), path);
    EXPECT_EQ(engine.starts, 1);
}

TEST_F(AudioRecorderTest, TwoRecordingsWithinOneSecond_ShareTheName) {
    const QString first = recorder.start();
    recorder.stop();
    loop.advance(900ms);
    EXPECT_EQ(recorder.start(), first);
}

TEST_F(AudioRecorderTest, Stop_FinishesTheFileAndKeepsTheWallClockDuration) {
    recorder.start();
    loop.advance(1234ms);
    recorder.stop();
    EXPECT_DOUBLE_EQ(recorder.lastDuration(), 1.234);
    EXPECT_EQ(codec.openFiles, 0);
    EXPECT_FALSE(engine.running);
    EXPECT_FALSE(engine.tap);
    EXPECT_TRUE(recorder.lastFileURL().has_value());
}

TEST_F(AudioRecorderTest, StopWithoutStart_ChangesNothing) {
    recorder.start();
    loop.advance(1s);
    recorder.stop();
    loop.advance(1s);
    recorder.stop();
    EXPECT_DOUBLE_EQ(recorder.lastDuration(), 1.0);
}

TEST_F(AudioRecorderTest, Buffers_AreAveragedToMonoAndWrittenAsTheyCome) {
    recorder.start();
    speak({0.2F, 0.4F, -1.0F, 1.0F});
    EXPECT_THAT(codec.written, ElementsAre(FloatEq(0.3F), FloatEq(0.0F)));
}

TEST_F(AudioRecorderTest, Level_ComesFromTheFirstChannelAndTheRingKeepsThirtyTwo) {
    recorder.start();
    engine.format = {48000, 2};
    speak({1.0F, 0.0F, 1.0F, 0.0F});
    EXPECT_FLOAT_EQ(recorder.level(), 1.0F);
    speak({0.0F, 1.0F, 0.0F, 1.0F});
    EXPECT_FLOAT_EQ(recorder.level(), 0.0F);
    EXPECT_THAT(recorder.levels(), SizeIs(32));
    EXPECT_FLOAT_EQ(recorder.levels()[30], 1.0F);
    for (int i = 0; i < 40; ++i)
        speak(fullScale);
    EXPECT_THAT(recorder.levels(), AllOf(SizeIs(32), Each(1.0F)));
}

TEST_F(AudioRecorderTest, BufferWithoutFrames_ReadsZeroAndStillShiftsTheRing) {
    recorder.start();
    speak(fullScale);
    speak({});
    EXPECT_FLOAT_EQ(recorder.level(), 0.0F);
    EXPECT_FLOAT_EQ(recorder.levels()[30], 1.0F);
    EXPECT_FLOAT_EQ(recorder.levels()[31], 0.0F);
}

TEST_F(AudioRecorderTest, AfterStop_ThirtyTwoZeros_AlsoWhenALevelWasUnderWay) {
    recorder.start();
    speak(fullScale);
    engine.speak(fullScale);
    recorder.stop();
    loop.runPosted();
    EXPECT_THAT(recorder.levels(), AllOf(SizeIs(32), Each(0.0F)));
    EXPECT_FLOAT_EQ(recorder.level(), 0.0F);
}

TEST_F(AudioRecorderTest, ChosenMicrophone_IsUsed) {
    defaults.set(QStringLiteral("micUniqueID"), QStringLiteral("usb"));
    recorder.start();
    EXPECT_EQ(engine.device, QStringLiteral("usb"));
}

TEST_F(AudioRecorderTest, ChosenMicrophoneUnplugged_RecordsFromTheDefaultWithoutAWord) {
    defaults.set(QStringLiteral("micUniqueID"), QStringLiteral("gone"));
    EXPECT_NO_THROW(recorder.start());
    EXPECT_EQ(engine.device, std::nullopt);
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, ChoiceTakenBack_RecordsFromTheDefaultAgain) {
    defaults.set(QStringLiteral("micUniqueID"), QStringLiteral("usb"));
    recorder.start();
    recorder.stop();
    defaults.set(QStringLiteral("micUniqueID"), QString());
    recorder.start();
    EXPECT_EQ(engine.device, std::nullopt);
}

TEST_F(AudioRecorderTest, NotAuthorized_FailsAndKeepsTheFileName) {
    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    try {
        recorder.start();
        FAIL();
    } catch (const AudioDeviceError& error) {
        EXPECT_EQ(error.reason(), AudioDeviceError::Reason(AudioDeviceError::MicNotAuthorized{}));
    }
    EXPECT_TRUE(recorder.lastFileURL().has_value());
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, InputWithoutUsableFormat_FailsAsUnavailable) {
    engine.format = {0, 0};
    try {
        recorder.start();
        FAIL();
    } catch (const AudioDeviceError& error) {
        EXPECT_EQ(error.reason(), AudioDeviceError::Reason(AudioDeviceError::EngineUnavailable{}));
    }
}

TEST_F(AudioRecorderTest, BitRates_AreTriedInTurnThenTheQuality) {
    codec.refusedAttempts = 3;
    recorder.start();
    ASSERT_THAT(codec.attempts, SizeIs(4));
    EXPECT_EQ(codec.attempts[1].bitRate, 48000);
    EXPECT_EQ(codec.attempts[2].bitRate, 32000);
    EXPECT_EQ(codec.attempts[3].bitRate, std::nullopt);
    EXPECT_EQ(codec.attempts[3].quality, 96);
}

TEST_F(AudioRecorderTest, NoEncoderAtAll_FailsWithTheLastOnesError) {
    codec.refusedAttempts = 4;
    EXPECT_THROW(recorder.start(), Error);
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, EngineStartFails_LeavesNothingBehindAndTheNextStartWorks) {
    engine.startFails = true;
    EXPECT_THROW(recorder.start(), AudioDeviceError);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(engine.tap);
    EXPECT_EQ(codec.openFiles, 0);
    EXPECT_FALSE(QFile::exists(*recorder.lastFileURL()));
    engine.startFails = false;
    EXPECT_NO_THROW(recorder.start());
}

TEST_F(AudioRecorderTest, ConversionOrWriteErrors_AreDroppedAndTheRecordingGoesOn) {
    recorder.start();
    codec.conversionFails = true;
    speak({0.5F, 0.5F});
    codec.conversionFails = false;
    codec.writingFails = true;
    EXPECT_NO_THROW(speak({0.5F, 0.5F}));
    codec.writingFails = false;
    speak({0.25F, 0.25F});
    EXPECT_THAT(codec.written, ElementsAre(FloatEq(0.25F)));
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, DestroyedWhileRecording_LosesTheRecordingWithItsFile) {
    {
        AudioRecorder other(loop, defaults, engine, codec, recordings);
        other.start();
        ASSERT_TRUE(QFile::exists(*other.lastFileURL()));
    }
    EXPECT_TRUE(QDir(recordings.path()).isEmpty());
    EXPECT_FALSE(engine.running);
    EXPECT_FALSE(engine.tap);
}

TEST_F(AudioRecorderTest, Leftovers_OfAKilledProcess_AreRemoved_AndRecordingsOfALivingOneStay) {
    OtherProcess session([this](const auto& ready) {
        ProcessFolder theirs{folder.path(), QStringLiteral("recordings")};
        AudioRecorder other(loop, defaults, engine, codec, theirs);
        other.start();
        ready();
        ::pause();
    });
    const auto left = [this] {
        QDirIterator files(folder.path(), {QStringLiteral("velmora-*.m4a")}, QDir::Files,
                           QDirIterator::Subdirectories);
        return files.hasNext();
    };
    ASSERT_TRUE(left());
    recorder.removeLeftovers();
    EXPECT_TRUE(left());
    session.kill();
    recorder.removeLeftovers();
    EXPECT_FALSE(left());
}

TEST_F(AudioRecorderTest, PcmChunks_OneAConvertedBuffer) {
    std::vector<QByteArray> chunks;
    recorder.onPcmChunk = [&chunks](const QByteArray& bytes) { chunks.push_back(bytes); };
    recorder.start();
    speak({1.0F, 1.0F, -1.0F, -1.0F});
    ASSERT_THAT(chunks, SizeIs(1));
    EXPECT_EQ(chunks[0], QByteArray::fromHex("ff7f0180"));
}

TEST_F(AudioRecorderTest, Prewarm_PreparesOnlyWhenAuthorizedAndNotRecording) {
    recorder.prewarm();
    EXPECT_EQ(engine.prepares, 1);
    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    recorder.prewarm();
    EXPECT_EQ(engine.prepares, 1);
    engine.authorizationStatus = MicrophoneAuthorization::Authorized;
    recorder.start();
    recorder.prewarm();
    EXPECT_EQ(engine.prepares, 1);
    EXPECT_EQ(engine.starts, 1);
}

TEST(LevelMeter, Silence_ReadsZero) {
    EXPECT_FLOAT_EQ(levelOfMono(std::vector<float>(320, 0.0F)), 0.0F);
    EXPECT_FLOAT_EQ(levelOfMono({}), 0.0F);
}

TEST(LevelMeter, FullScale_ReadsOne) {
    EXPECT_FLOAT_EQ(levelOfMono({1.0F, -1.0F, 1.0F, -1.0F}), 1.0F);
    EXPECT_FLOAT_EQ(levelOfMono({2.0F}), 1.0F);
}

TEST(LevelMeter, Between_IsLinearInDecibels) {
    EXPECT_NEAR(levelOfMono({0.031622F, -0.031622F}), 0.5F, 0.001F); // -30 dBFS
    EXPECT_NEAR(levelOfMono({0.001F}), 0.0F, 0.001F);                // -60 dBFS
}

TEST(Pcm16, ExtremesAndTruncation_AreExact) {
    const std::vector<float> samples{1.0F, -1.0F, 2.0F, -2.0F, 0.0F, 0.00004F, -0.00004F, 0.5F};
    const QByteArray bytes = toPcm16(samples);
    std::vector<int> values;
    for (qsizetype i = 0; i < bytes.size(); i += 2)
        values.push_back(qFromLittleEndian<qint16>(bytes.constData() + i));
    EXPECT_THAT(values, ElementsAre(32767, -32767, 32767, -32767, 0, 1, -1, 16383));
}
