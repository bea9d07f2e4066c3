#include "core/level_test.h"
#include "foundation/qt_main_loop.h"
#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"
#include "support/desktop/private_pulse_server.h"

#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace velmora;
using namespace velmora::test;

namespace {

/// A level test on a sound server of its own, whose one microphone hums at amplitude 0.5.
class LevelTestOnPulse : public testing::Test {
protected:
    LevelTestOnPulse() { m_plug = m_server.loadHummingMicrophone(u"mic"_s, 500); }

    [[nodiscard]] bool hearsTheHum() {
        return QTest::qWaitFor([&] { return std::abs(m_test.level() - humLevel) < 0.02; }, 20'000);
    }
    [[nodiscard]] bool recordsNothing() {
        return QTest::qWaitFor([&] { return m_server.recordingClients() == 0; }, 20'000);
    }

    /// Amplitude 0.5 is an effective value of 0.354, which is -9 dBFS.
    static constexpr double humLevel = 1 - 9.03 / 60;

    PrivatePulseServer m_server;
    QByteArray m_plug;
    PulseConnection m_connection{m_server.address()};
    PulseAudioEngine m_engine{m_connection};
    PulseDevices m_devices{m_connection};
    QTemporaryDir m_folder;
    UserDefaults m_defaults{m_folder.filePath(u"defaults.json"_s)};
    QtMainLoop m_loop;
    LevelTest m_test{m_loop, m_defaults, m_engine};
};

} // namespace

TEST_F(LevelTestOnPulse, Tone_IsHeardUntilStopped) {
    EXPECT_EQ(m_server.recordingClients(), 0);
    m_test.start();
    EXPECT_EQ(m_test.problem(), QString());
    EXPECT_TRUE(hearsTheHum());
    EXPECT_EQ(m_server.recordingClients(), 1);
    m_test.stop();
    EXPECT_EQ(m_test.level(), 0);
    EXPECT_TRUE(recordsNothing());
}

TEST_F(LevelTestOnPulse, EndedWhileItListens_ClosesTheMicrophone) {
    PulseAudioEngine engine(m_connection);
    {
        LevelTest other(m_loop, m_defaults, engine);
        other.start();
        ASSERT_EQ(m_server.recordingClients(), 1);
    }
    EXPECT_TRUE(recordsNothing());
}

TEST_F(LevelTestOnPulse, MicrophonePluggedInLater_IsHeardAfterTheRestart) {
    m_server.unloadModule(m_plug);
    QObject::connect(&m_devices, &AudioInputs::inputsChanged, &m_test, &LevelTest::restart);
    EXPECT_EQ(m_devices.inputs().size(), 0U);
    m_test.start();
    EXPECT_NE(m_test.problem(), QString());
    m_server.plugInAgain(u"mic"_s);
    EXPECT_TRUE(hearsTheHum());
    EXPECT_EQ(m_test.problem(), QString());
}
