#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_sound_player.h"
#include "support/desktop/private_pulse_server.h"
#include "support/desktop/tap_recording.h"
#include "support/desktop/tone.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace velmora;
using namespace velmora::test;

namespace {

constexpr double soundPeak = 0.5;     // of the sounds that ship
constexpr double longSoundPeak = 0.8; // of the test's own

/// A player whose speakers are listened to.
class PulseSoundPlayerTest : public testing::Test {
protected:
    PulseSoundPlayerTest() {
        plugInSpeakers();
        writeWav(m_folder.filePath(u"Long.wav"_s), makeTone(1000, longSoundPeak, 60, {48'000, 1}),
                 {48'000, 1});
        m_ears.setInputDevice(u"ears"_s);
        m_ears.installTap(m_heard.tap());
        m_ears.start();
        EXPECT_TRUE(m_heard.waitForSeconds(0.05));
    }
    void plugInSpeakers() {
        m_server.loadModule(
            u"module-null-sink sink_name=speakers norewinds=1 rate=48000 channels=1 channel_map=mono"_s);
        m_server.loadModule(u"module-remap-source source_name=ears master=speakers.monitor"_s);
    }
    /// Waits for a sound to begin and to end, and returns its peak.
    double hearSound() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return peakOf(m_heard.samples()) > 0.01; }, 20'000));
        EXPECT_TRUE(QTest::qWaitFor([this] { return peakOf(m_heard.last(0.2)) == 0; }, 20'000));
        return peakOf(m_heard.samples());
    }
    /// Listens for a while, in which nothing may be heard.
    void hearNothing() {
        const double start = m_heard.seconds();
        ASSERT_TRUE(m_heard.waitForSeconds(start + 0.5));
        EXPECT_EQ(peakOf(m_heard.last(0.5)), 0);
    }
    int playingStreams() const {
        return int(m_server.pactl({u"list"_s, u"short"_s, u"sink-inputs"_s}).count("protocol-native"));
    }

    PrivatePulseServer m_server;
    PulseConnection m_connection{m_server.address()};
    TapRecording m_heard;
    PulseAudioEngine m_ears{m_connection};
    QTemporaryDir m_folder;
    PulseSoundPlayer m_player{m_connection, QStringLiteral(SOUNDS_FOLDER)};
};

} // namespace

TEST_F(PulseSoundPlayerTest, Play_FullVolume_IsHeardAsItIs) {
    m_player.play(u"Tink"_s, 1);
    EXPECT_NEAR(hearSound(), soundPeak, 0.002);
}

TEST_F(PulseSoundPlayerTest, Play_LowVolume_IsScaled) {
    m_player.play(u"Pop"_s, 0.35F);
    EXPECT_NEAR(hearSound(), 0.35 * soundPeak, 0.002);
}

TEST_F(PulseSoundPlayerTest, Play_VolumeOutOfRange_IsBounded) {
    m_player.play(u"Tink"_s, 7);
    EXPECT_NEAR(hearSound(), soundPeak, 0.002);
    m_player.play(u"Tink"_s, -1);
    hearNothing();
}

TEST_F(PulseSoundPlayerTest, Play_UnknownName_IsSilent) {
    m_player.play(u"Clank"_s, 1);
    hearNothing();
    EXPECT_EQ(playingStreams(), 0);
}

TEST_F(PulseSoundPlayerTest, Play_SoundEnded_LeavesNoStream) {
    m_player.play(u"Tink"_s, 1);
    hearSound();
    EXPECT_TRUE(QTest::qWaitFor([this] { return playingStreams() == 0; }, 20'000));
}

TEST_F(PulseSoundPlayerTest, Play_TwoSounds_AreHeardTogether) {
    PulseSoundPlayer player(m_connection, m_folder.path());
    player.play(u"Long"_s, 0.5F);
    m_player.play(u"Tink"_s, 1);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return peakOf(m_heard.samples()) > 0.5 * longSoundPeak + 0.2; }, 20'000));
}

TEST_F(PulseSoundPlayerTest, Play_WhileRunning_BeginsAnew) {
    PulseSoundPlayer player(m_connection, m_folder.path());
    player.play(u"Long"_s, 1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return peakOf(m_heard.samples()) > 0.7; }, 20'000));
    player.play(u"Long"_s, 0.25F);
    // The first one would go on for a minute.
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return std::abs(peakOf(m_heard.last(0.1)) - 0.25 * longSoundPeak) < 0.002; }, 20'000));
    EXPECT_EQ(playingStreams(), 1);
}

TEST_F(PulseSoundPlayerTest, Destruction_WhileRunning_CutsOff) {
    {
        PulseSoundPlayer player(m_connection, m_folder.path());
        player.play(u"Long"_s, 1);
        ASSERT_TRUE(QTest::qWaitFor([this] { return peakOf(m_heard.samples()) > 0.7; }, 20'000));
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return peakOf(m_heard.last(0.1)) == 0; }, 20'000));
}

TEST_F(PulseSoundPlayerTest, Play_ManyTimesInARow_LeavesNoStream) {
    for (int i = 0; i < 200; ++i)
        m_player.play(i % 2 == 0 ? u"Tink"_s : u"Pop"_s, 1);
    hearSound();
    EXPECT_TRUE(QTest::qWaitFor([this] { return playingStreams() == 0; }, 20'000));
}

TEST_F(PulseSoundPlayerTest, Play_NoServer_IsSilentUntilThereIsOneAgain) {
    m_player.play(u"Tink"_s, 1);
    m_server.kill();
    for (int i = 0; i < 50; ++i)
        m_player.play(u"Tink"_s, 1);
    m_server.start();
    plugInSpeakers();
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return m_ears.authorization() == MicrophoneAuthorization::Authorized; }, 20'000));
    // The ears are the recording of before, which finds its source again; what was played without a server is
    // lost.
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_server.recordingClients() == 1; }, 20'000));
    m_heard.clear();
    hearNothing();
    m_player.play(u"Tink"_s, 1);
    EXPECT_NEAR(hearSound(), soundPeak, 0.002);
}

TEST_F(PulseSoundPlayerTest, Play_NoSpeakers_IsSilent) {
    PrivatePulseServer mute;
    PulseConnection connection(mute.address());
    PulseSoundPlayer player(connection, QStringLiteral(SOUNDS_FOLDER));
    PulseAudioEngine(connection).prepare();
    for (int i = 0; i < 10; ++i)
        player.play(u"Tink"_s, 1);
    EXPECT_TRUE(mute.pactl({u"list"_s, u"short"_s, u"sink-inputs"_s}).isEmpty());
}

TEST_F(PulseSoundPlayerTest, Construction_NoFolder_KnowsNoSound) {
    PulseSoundPlayer player(m_connection, u"/no/such/folder"_s);
    player.play(u"Tink"_s, 1);
    hearNothing();
}
