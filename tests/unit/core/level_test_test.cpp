#include "core/level_test.h"
#include "support/fake_audio.h"
#include "support/hand_loop.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::AllOf;
using testing::Each;
using testing::SizeIs;

namespace {

class LevelTestTest : public testing::Test {
protected:
    void speak(const std::vector<float>& samples) {
        engine.speak(samples);
        loop.runPosted();
    }
    void choose(const char* uniqueID) {
        defaults.set(QStringLiteral("micUniqueID"), QString::fromLatin1(uniqueID));
    }

    HandLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    FakeAudioEngine engine;
    std::optional<LevelTest> test{std::in_place, loop, defaults, engine};
    const std::vector<float> loud = std::vector<float>(960, 1.0F);
};

const auto silence = AllOf(SizeIs(LevelSource::levelCount), Each(0.0F));

} // namespace

TEST_F(LevelTestTest, BeforeTheStart_NothingIsOpen) {
    EXPECT_FALSE(test->isRunning());
    EXPECT_EQ(engine.starts, 0);
    EXPECT_THAT(test->levels(), silence);
}

TEST_F(LevelTestTest, Start_OpensTheDefaultMicrophoneWithoutAProblem) {
    const QSignalSpy running(&*test, &LevelTest::isRunningChanged);
    test->start();
    EXPECT_TRUE(test->isRunning());
    EXPECT_EQ(running.size(), 1);
    EXPECT_TRUE(engine.running);
    EXPECT_EQ(engine.device, std::nullopt);
    EXPECT_EQ(test->problem(), QString());
}

TEST_F(LevelTestTest, Levels_FollowTheVoiceOldestFirst) {
    test->start();
    const QSignalSpy changes(&*test, &LevelSource::levelsChanged);
    speak(loud);
    speak({0.0F, 0.0F});
    EXPECT_EQ(changes.size(), 2);
    EXPECT_FLOAT_EQ(test->level(), 0.0F);
    EXPECT_THAT(test->levels(), SizeIs(32));
    EXPECT_FLOAT_EQ(test->levels()[29], 0.0F);
    EXPECT_FLOAT_EQ(test->levels()[30], 1.0F);
    EXPECT_FLOAT_EQ(test->levels()[31], 0.0F);
    for (int i = 0; i < 40; ++i)
        speak(loud);
    EXPECT_FLOAT_EQ(test->level(), 1.0F);
    EXPECT_THAT(test->levels(), AllOf(SizeIs(32), Each(1.0F)));
}

TEST_F(LevelTestTest, StartWhileRunning_OpensNothingAnew) {
    test->start();
    speak(loud);
    test->start();
    EXPECT_EQ(engine.starts, 1);
    EXPECT_FLOAT_EQ(test->level(), 1.0F);
}

TEST_F(LevelTestTest, ChosenMicrophone_IsOpened) {
    choose("usb");
    test->start();
    EXPECT_EQ(engine.device, QStringLiteral("usb"));
}

TEST_F(LevelTestTest, AnotherMicrophoneChosenMeanwhile_IsOpenedInsteadFromSilence) {
    test->start();
    speak(loud);
    choose("usb");
    EXPECT_EQ(engine.device, QStringLiteral("usb"));
    EXPECT_EQ(engine.starts, 2);
    EXPECT_TRUE(engine.running);
    EXPECT_THAT(test->levels(), silence);
    speak(loud);
    EXPECT_FLOAT_EQ(test->level(), 1.0F);
    choose("");
    EXPECT_EQ(engine.device, std::nullopt);
    EXPECT_EQ(engine.starts, 3);
}

TEST_F(LevelTestTest, MicrophoneChosenThatIsGone_MeansTheDefault) {
    choose("usb");
    test->start();
    choose("gone");
    EXPECT_EQ(engine.device, std::nullopt);
    EXPECT_TRUE(engine.running);
    EXPECT_EQ(test->problem(), QString());
}

TEST_F(LevelTestTest, OtherSettingsOrAChoiceWhileStopped_OpenNothing) {
    choose("usb");
    EXPECT_EQ(engine.starts, 0);
    test->start();
    defaults.set(QStringLiteral("hudStyle"), QStringLiteral("wave"));
    EXPECT_EQ(engine.starts, 1);
}

TEST_F(LevelTestTest, MicrophoneThatCannotBeOpened_IsAProblemUntilRestartOpensIt) {
    engine.startFails = true;
    const QSignalSpy problems(&*test, &LevelTest::problemChanged);
    test->start();
    EXPECT_TRUE(test->isRunning());
    EXPECT_EQ(test->problem(), AudioDeviceError(AudioDeviceError::SetFailed{7}).localizedDescription());
    EXPECT_FALSE(engine.tap);
    test->restart();
    EXPECT_EQ(problems.size(), 1);
    engine.startFails = false;
    test->restart();
    EXPECT_EQ(test->problem(), QString());
    EXPECT_EQ(problems.size(), 2);
    speak(loud);
    EXPECT_FLOAT_EQ(test->level(), 1.0F);
}

TEST_F(LevelTestTest, MicrophoneNotAllowed_IsTheProblemOfTheRight) {
    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    test->start();
    EXPECT_EQ(test->problem(), AudioDeviceError(AudioDeviceError::MicNotAuthorized{}).localizedDescription());
    EXPECT_EQ(engine.starts, 0);
}

TEST_F(LevelTestTest, MicrophoneLostWhileItRuns_RestartTellsAndFallsSilent) {
    test->start();
    speak(loud);
    engine.startFails = true;
    test->restart();
    EXPECT_NE(test->problem(), QString());
    EXPECT_THAT(test->levels(), silence);
    EXPECT_FALSE(engine.running);
}

TEST_F(LevelTestTest, RestartWhileStopped_OpensNothing) {
    test->restart();
    EXPECT_EQ(engine.starts, 0);
    EXPECT_FALSE(test->isRunning());
}

TEST_F(LevelTestTest, BuffersOfAnEarlierOpening_AreIgnored) {
    test->start();
    engine.speak(loud);
    test->restart();
    loop.runPosted();
    EXPECT_THAT(test->levels(), silence);
    engine.speak(loud);
    test->stop();
    test->start();
    loop.runPosted();
    EXPECT_THAT(test->levels(), silence);
}

TEST_F(LevelTestTest, Stop_ClosesAndFallsSilentWithoutAProblem) {
    test->start();
    speak(loud);
    engine.speak(loud);
    test->stop();
    loop.runPosted();
    EXPECT_FALSE(test->isRunning());
    EXPECT_FALSE(engine.running);
    EXPECT_FALSE(engine.tap);
    EXPECT_THAT(test->levels(), silence);
    EXPECT_FLOAT_EQ(test->level(), 0.0F);
}

TEST_F(LevelTestTest, StopWithAProblem_ForgetsIt) {
    engine.startFails = true;
    test->start();
    test->stop();
    EXPECT_EQ(test->problem(), QString());
}

TEST_F(LevelTestTest, Destroyed_ClosesTheMicrophoneAndIgnoresWhatIsUnderWay) {
    test->start();
    engine.speak(loud);
    test.reset();
    EXPECT_FALSE(engine.running);
    EXPECT_FALSE(engine.tap);
    loop.runPosted();
}
