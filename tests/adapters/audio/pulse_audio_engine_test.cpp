#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "support/desktop/private_pulse_server.h"
#include "support/desktop/tap_recording.h"
#include "support/desktop/tone.h"

#include <QCoro/QCoroTask>
#include <QTest>

#include <gmock/gmock.h>

#include <atomic>
#include <semaphore>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

/// An engine on a server of its own, with two microphones of different tones; the first one is the default.
class PulseAudioEngineTest : public testing::Test {
protected:
    PulseAudioEngineTest() {
        m_low = m_server.loadHummingMicrophone(u"low_mic"_s, 500);
        m_high = m_server.loadHummingMicrophone(u"high_mic"_s, 1500, 44'100);
        m_server.loadModule(u"module-null-sink sink_name=speakers norewinds=1"_s);
        m_server.pactl({u"set-default-source"_s, u"low_mic"_s});
    }

    /// The loudness of a tone in the last half second.
    double lately(double frequency) const {
        const AudioFormat format = m_recording.format();
        return measureTone(takeChannel(m_recording.last(0.5), 0, format.channels), frequency,
                           format.sampleRate);
    }
    bool waitForTone(double frequency) const {
        return QTest::qWaitFor([&] { return m_recording.seconds() > 0.6 && lately(frequency) > 0.3; },
                               20'000);
    }
    void startRecording() {
        m_engine.installTap(m_recording.tap());
        m_engine.start();
    }

    PrivatePulseServer m_server;
    QByteArray m_low;
    QByteArray m_high;
    PulseConnection m_connection{m_server.address()};
    TapRecording m_recording; // outlives the engine, whose tap writes to it
    PulseAudioEngine m_engine{m_connection};
};

/// The reason of what an action throws.
template<typename Action>
std::optional<AudioDeviceError::Reason> reasonOf(Action action) {
    try {
        action();
    } catch (const AudioDeviceError& error) {
        return error.reason();
    }
    return std::nullopt;
}

} // namespace

TEST_F(PulseAudioEngineTest, AvailableInputs_MonitorsThere_ListsMicrophonesInOrder) {
    EXPECT_THAT(m_engine.availableInputs(),
                testing::ElementsAre(AudioInput{u"low_mic"_s, u"low_mic-description"_s},
                                     AudioInput{u"high_mic"_s, u"high_mic-description"_s}));
}

TEST_F(PulseAudioEngineTest, Start_NothingChosen_RecordsDefault) {
    EXPECT_EQ(m_engine.inputFormat(), (AudioFormat{48'000, 1}));
    startRecording();
    ASSERT_TRUE(m_recording.waitForSeconds(0.6));
    EXPECT_EQ(m_recording.format(), (AudioFormat{48'000, 1}));
    EXPECT_NEAR(lately(500), 0.5, 0.01);
    EXPECT_LT(lately(1500), 0.001);
}

TEST_F(PulseAudioEngineTest, Start_DeviceChosen_RecordsItInItsOwnRate) {
    m_engine.setInputDevice(u"high_mic"_s);
    EXPECT_EQ(m_engine.inputFormat(), (AudioFormat{44'100, 1}));
    startRecording();
    ASSERT_TRUE(m_recording.waitForSeconds(0.6));
    EXPECT_EQ(m_recording.format(), (AudioFormat{44'100, 1}));
    EXPECT_NEAR(lately(1500), 0.5, 0.01);
    EXPECT_LT(lately(500), 0.001);
}

TEST_F(PulseAudioEngineTest, Start_StereoDevice_DeliversBothChannelsApart) {
    m_server.loadModule(u"module-null-sink sink_name=feed norewinds=1 rate=44100 channels=2"_s);
    m_server.loadModule(
        u"module-remap-source source_name=stereo_mic master=feed.monitor rate=44100 channels=2"_s);
    QTemporaryDir folder;
    std::vector<float> tone = makeTone(1000, 0.5, 5, {44'100, 2});
    for (std::size_t i = 1; i < tone.size(); i += 2)
        tone[i] = 0;
    writeWav(folder.filePath(u"left.wav"_s), tone, {44'100, 2});

    m_engine.setInputDevice(u"stereo_mic"_s);
    EXPECT_EQ(m_engine.inputFormat(), (AudioFormat{44'100, 2}));
    startRecording();
    QProcess player;
    player.start(u"paplay"_s, {u"-s"_s, QString::fromLatin1(m_server.address()), u"--device=feed"_s,
                               folder.filePath(u"left.wav"_s)});
    ASSERT_TRUE(waitForTone(1000));
    EXPECT_EQ(m_recording.format(), (AudioFormat{44'100, 2}));
    EXPECT_LT(peakOf(takeChannel(m_recording.last(0.5), 1, 2)), 0.001);
    player.kill();
    player.waitForFinished();
}

TEST_F(PulseAudioEngineTest, SetInputDevice_NoSuchDevice_ThrowsNotFoundAndUsesDefault) {
    EXPECT_EQ(reasonOf([&] { m_engine.setInputDevice(u"gone_mic"_s); }),
              AudioDeviceError::Reason(AudioDeviceError::NotFound{u"gone_mic"_s}));
    startRecording();
    EXPECT_TRUE(waitForTone(500));
}

TEST_F(PulseAudioEngineTest, SetInputDevice_WhateverElseTheServerWouldTake_ThrowsNotFound) {
    for (const QString& name : {u"speakers.monitor"_s, u"@DEFAULT_SOURCE@"_s, u"0"_s, u"low_mi"_s, QString()})
        EXPECT_EQ(reasonOf([&] { m_engine.setInputDevice(name); }),
                  AudioDeviceError::Reason(AudioDeviceError::NotFound{name}));
}

TEST_F(PulseAudioEngineTest, Start_ChosenDeviceUnpluggedSince_ThrowsNotFound) {
    m_engine.setInputDevice(u"high_mic"_s);
    m_server.unloadModule(m_high);
    EXPECT_EQ(m_engine.inputFormat().sampleRate, 0);
    EXPECT_EQ(reasonOf([&] { m_engine.start(); }),
              AudioDeviceError::Reason(AudioDeviceError::NotFound{u"high_mic"_s}));
}

TEST_F(PulseAudioEngineTest, UseDefaultInput_AfterChoice_RecordsDefaultAgain) {
    m_engine.setInputDevice(u"high_mic"_s);
    m_engine.useDefaultInput();
    startRecording();
    EXPECT_TRUE(waitForTone(500));
}

TEST_F(PulseAudioEngineTest, Start_DefaultIsMonitor_ThrowsEngineUnavailable) {
    m_server.pactl({u"set-default-source"_s, u"speakers.monitor"_s});
    EXPECT_EQ(m_engine.inputFormat(), AudioFormat());
    EXPECT_EQ(reasonOf([&] { m_engine.start(); }),
              AudioDeviceError::Reason(AudioDeviceError::EngineUnavailable{}));
}

TEST_F(PulseAudioEngineTest, Authorization_MicrophonesCome_FollowsThem) {
    EXPECT_EQ(m_engine.authorization(), MicrophoneAuthorization::Authorized);
    m_server.unloadModule(m_low);
    m_server.unloadModule(m_high);
    EXPECT_EQ(m_engine.authorization(), MicrophoneAuthorization::Denied);
    EXPECT_FALSE(QCoro::waitFor(m_engine.requestAccess()));
    m_server.loadHummingMicrophone(u"new_mic"_s, 700);
    EXPECT_TRUE(QCoro::waitFor(m_engine.requestAccess()));
}

TEST_F(PulseAudioEngineTest, Prepare_Always_OpensNoCapture) {
    m_engine.prepare();
    EXPECT_THAT(m_server.pactl({u"list"_s, u"short"_s, u"clients"_s}).toStdString(),
                testing::HasSubstr("adapters_audio"));
    EXPECT_EQ(m_server.recordingClients(), 0);
}

TEST_F(PulseAudioEngineTest, Stop_AfterStart_ClosesCapture) {
    startRecording();
    EXPECT_EQ(m_server.recordingClients(), 1);
    m_engine.stop();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_server.recordingClients() == 0; }, 20'000));
}

TEST_F(PulseAudioEngineTest, Start_Twice_OpensOneCapture) {
    startRecording();
    m_engine.start();
    EXPECT_EQ(m_server.recordingClients(), 1);
    m_engine.stop();
    m_engine.stop();
    m_recording.clear();
    m_engine.start();
    EXPECT_TRUE(m_recording.waitForSeconds(0.1));
}

TEST_F(PulseAudioEngineTest, InstallTap_WhileOneIsThere_ReplacesIt) {
    startRecording();
    ASSERT_TRUE(m_recording.waitForSeconds(0.1));
    TapRecording second;
    m_engine.installTap(second.tap());
    m_recording.clear();
    ASSERT_TRUE(second.waitForSeconds(0.2));
    EXPECT_EQ(m_recording.seconds(), 0);
    m_engine.removeTap();
}

TEST_F(PulseAudioEngineTest, RemoveTap_TapIsBusy_WaitsAndIsTheLastOfIt) {
    std::binary_semaphore entered(0);
    std::atomic<bool> alive = false;
    std::atomic<int> calls = 0;
    std::atomic<int> callsWhenDead = 0;
    m_engine.start();
    for (int round = 0; round < 20; ++round) {
        alive = true;
        m_engine.installTap([&](const AudioBuffer&) {
            ++calls;
            entered.release();
            // Longer than the main thread needs from here to the removal.
            std::this_thread::sleep_for(5ms);
            if (!alive)
                ++callsWhenDead;
        });
        ASSERT_TRUE(entered.try_acquire_for(20s));
        m_engine.removeTap();
        alive = false;
        static_cast<void>(entered.try_acquire());
    }
    const int ended = calls;
    m_engine.installTap(m_recording.tap());
    ASSERT_TRUE(m_recording.waitForSeconds(0.1));
    EXPECT_EQ(calls, ended);
    EXPECT_EQ(callsWhenDead, 0);
}
