#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "support/desktop/private_pulse_server.h"
#include "support/desktop/tap_recording.h"
#include "support/desktop/tone.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

using Clock = std::chrono::steady_clock;

/// A recording during which things break.
class PulseAudioEngineLossTest : public testing::Test {
protected:
    PulseAudioEngineLossTest() { m_microphone = m_server.loadHummingMicrophone(u"mic"_s, 500); }

    /// Returns when the microphone's tone has been recorded.
    void record() {
        m_engine.installTap(m_recording.tap());
        m_engine.start();
        m_started = Clock::now();
        EXPECT_TRUE(waitUntilToneIs(0.5));
    }
    /// Waits for a level of the microphone's tone in the last tenth of a second.
    bool waitUntilToneIs(double level) const {
        return QTest::qWaitFor(
            [&] {
                return m_recording.seconds() > 0.1 &&
                       std::abs(measureTone(m_recording.last(0.1), 500, 48'000) - level) < 0.01;
            },
            20'000);
    }
    /// Whether what was recorded is as long as the time since the start, but for the way to the first sample
    /// and the buffer under way. A busy machine may be late with it.
    bool keepsPace() const {
        return QTest::qWaitFor(
            [this] {
                const double passed = std::chrono::duration<double>(Clock::now() - m_started).count();
                return std::abs(passed - m_recording.seconds()) < 0.3;
            },
            20'000);
    }

    PrivatePulseServer m_server;
    QByteArray m_microphone;
    PulseConnection m_connection{m_server.address()};
    TapRecording m_recording; // outlives the engine, whose tap writes to it
    PulseAudioEngine m_engine{m_connection};
    Clock::time_point m_started;
};

} // namespace

TEST_F(PulseAudioEngineLossTest, ChosenDeviceUnplugged_WhileRecording_SilenceKeepsPace) {
    m_engine.setInputDevice(u"mic"_s);
    record();
    m_server.unloadModule(m_microphone);
    ASSERT_TRUE(waitUntilToneIs(0));
    const double then = m_recording.seconds();
    ASSERT_TRUE(m_recording.waitForSeconds(then + 1));
    EXPECT_TRUE(keepsPace());
}

TEST_F(PulseAudioEngineLossTest, ChosenDevicePluggedInAgain_WhileRecording_IsTakenUp) {
    m_engine.setInputDevice(u"mic"_s);
    record();
    m_server.unloadModule(m_microphone);
    ASSERT_TRUE(waitUntilToneIs(0));
    m_server.plugInAgain(u"mic"_s);
    ASSERT_TRUE(waitUntilToneIs(0.5));
    EXPECT_TRUE(keepsPace());
}

TEST_F(PulseAudioEngineLossTest, ChosenDeviceUnplugged_AnotherThere_IsNotReplaced) {
    m_server.loadHummingMicrophone(u"other_mic"_s, 1500);
    m_engine.setInputDevice(u"mic"_s);
    record();
    m_server.unloadModule(m_microphone);
    ASSERT_TRUE(waitUntilToneIs(0));
    const double then = m_recording.seconds();
    ASSERT_TRUE(m_recording.waitForSeconds(then + 1));
    EXPECT_EQ(peakOf(m_recording.last(0.9)), 0);
}

TEST_F(PulseAudioEngineLossTest, DefaultDeviceUnplugged_AnotherThere_ContinuesWithIt) {
    m_server.loadHummingMicrophone(u"other_mic"_s, 1500, 44'100);
    m_server.pactl({u"set-default-source"_s, u"mic"_s});
    record();
    m_server.unloadModule(m_microphone);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return measureTone(m_recording.last(0.1), 1500, 48'000) > 0.45; }, 20'000));
    EXPECT_EQ(m_recording.format(), (AudioFormat{48'000, 1}));
}

TEST_F(PulseAudioEngineLossTest, DefaultDeviceUnplugged_OnlyMonitorLeft_HearsNothingOfIt) {
    m_server.loadModule(u"module-null-sink sink_name=speakers norewinds=1"_s);
    m_server.loadModule(u"module-sine sink=speakers frequency=1500"_s);
    record();
    m_server.unloadModule(m_microphone);
    ASSERT_TRUE(waitUntilToneIs(0));
    const double then = m_recording.seconds();
    ASSERT_TRUE(m_recording.waitForSeconds(then + 1.5));
    EXPECT_EQ(peakOf(m_recording.last(1.4)), 0);
    EXPECT_LT(measureTone(m_recording.samples(), 1500, 48'000), 0.001);
    EXPECT_TRUE(keepsPace());
}

TEST_F(PulseAudioEngineLossTest, DeviceSuspended_WhileRecording_SilenceUntilItIsResumed) {
    record();
    m_server.pactl({u"suspend-source"_s, u"mic"_s, u"1"_s});
    ASSERT_TRUE(waitUntilToneIs(0));
    m_server.pactl({u"suspend-source"_s, u"mic"_s, u"0"_s});
    ASSERT_TRUE(waitUntilToneIs(0.5));
    EXPECT_TRUE(keepsPace());
}

TEST_F(PulseAudioEngineLossTest, ServerKilled_WhileRecording_SilenceKeepsPace) {
    record();
    m_server.kill();
    ASSERT_TRUE(waitUntilToneIs(0));
    const double then = m_recording.seconds();
    ASSERT_TRUE(m_recording.waitForSeconds(then + 1.2));
    EXPECT_TRUE(keepsPace());
    m_engine.stop();
    m_recording.clear();
    EXPECT_EQ(m_engine.authorization(), MicrophoneAuthorization::Denied);
    EXPECT_EQ(m_recording.seconds(), 0);
}

TEST_F(PulseAudioEngineLossTest, ServerRestarted_WhileRecording_CapturesAgain) {
    record();
    m_server.kill();
    ASSERT_TRUE(waitUntilToneIs(0));
    m_server.start();
    m_server.loadHummingMicrophone(u"mic"_s, 500, 44'100);
    ASSERT_TRUE(waitUntilToneIs(0.5));
    EXPECT_EQ(m_recording.format(), (AudioFormat{48'000, 1}));
    EXPECT_TRUE(keepsPace());
}

TEST_F(PulseAudioEngineLossTest, ServerRestarted_BetweenRecordings_NextStartWorks) {
    record();
    m_engine.removeTap();
    m_engine.stop();
    m_server.kill();
    m_server.start();
    m_server.loadHummingMicrophone(u"mic"_s, 500);
    m_recording.clear();
    record();
}

TEST_F(PulseAudioEngineLossTest, ServerGone_EverythingAsked_AnswersThatThereIsNoInput) {
    m_server.kill();
    EXPECT_EQ(m_engine.authorization(), MicrophoneAuthorization::Denied);
    EXPECT_THAT(m_engine.availableInputs(), testing::IsEmpty());
    EXPECT_EQ(m_engine.inputFormat(), AudioFormat());
    m_engine.prepare();
    EXPECT_THROW(m_engine.setInputDevice(u"mic"_s), AudioDeviceError);
    EXPECT_THROW(m_engine.start(), AudioDeviceError);
    m_engine.stop();
}

TEST_F(PulseAudioEngineLossTest, ServerHangs_EverythingAsked_GivesUpAndRecovers) {
    EXPECT_EQ(m_engine.authorization(), MicrophoneAuthorization::Authorized);
    m_server.freeze();
    EXPECT_EQ(m_engine.authorization(), MicrophoneAuthorization::Denied);
    EXPECT_THROW(m_engine.start(), AudioDeviceError);
    m_server.thaw();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return m_engine.authorization() == MicrophoneAuthorization::Authorized; }, 20'000));
    record();
}

TEST_F(PulseAudioEngineLossTest, ServerHangs_AtFirstUse_GivesUpAndRecovers) {
    m_server.freeze();
    EXPECT_EQ(m_engine.authorization(), MicrophoneAuthorization::Denied);
    m_server.thaw();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return m_engine.authorization() == MicrophoneAuthorization::Authorized; }, 20'000));
}

TEST_F(PulseAudioEngineLossTest, Connection_ServerGoesAndComes_TellsOnTheMainThread) {
    QObject receiver;
    std::vector<bool> told;
    QObject::connect(&m_connection, &PulseConnection::readyChanged, &receiver, [&](bool ready) {
        EXPECT_EQ(QThread::currentThread(), receiver.thread());
        told.push_back(ready);
    });
    m_engine.prepare();
    ASSERT_TRUE(QTest::qWaitFor([&] { return told == std::vector{true}; }, 20'000));
    m_server.kill();
    ASSERT_TRUE(QTest::qWaitFor([&] { return told == std::vector{true, false}; }, 20'000));
    m_server.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return told == std::vector{true, false, true}; }, 20'000));
}
