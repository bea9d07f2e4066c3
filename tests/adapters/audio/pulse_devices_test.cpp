#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"
#include "support/desktop/private_pulse_server.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// What a window knows of the devices of a server: it looks again when it is told to, and not before.
class PulseDevicesTest : public testing::Test {
protected:
    // One receiver does both: what the sound thread emits can reach two of them in different turns of the
    // main loop.
    PulseDevicesTest() {
        QObject::connect(&m_devices, &AudioInputs::inputsChanged, &m_window, [this] {
            ++m_timesTold;
            look();
        });
    }

    void look() { m_seen = m_devices.inputs(); }
    [[nodiscard]] bool sees(const std::vector<AudioInput>& inputs) {
        return QTest::qWaitFor([&] { return m_seen == inputs; }, 20'000);
    }

    PrivatePulseServer m_server;
    PulseConnection m_connection{m_server.address()};
    PulseDevices m_devices{m_connection};
    QObject m_window;
    std::vector<AudioInput> m_seen;
    int m_timesTold = 0;
};

const AudioInput desk{u"desk_mic"_s, u"desk_mic-description"_s};
const AudioInput head{u"head_mic"_s, u"head_mic-description"_s};

} // namespace

TEST_F(PulseDevicesTest, MicrophonesComeAndGo_InputsFollow) {
    look();
    EXPECT_THAT(m_seen, IsEmpty());
    m_server.loadHummingMicrophone(desk.uniqueID, 500);
    EXPECT_TRUE(sees({desk}));
    const QByteArray plug = m_server.loadHummingMicrophone(head.uniqueID, 700);
    EXPECT_TRUE(sees({desk, head}));
    m_server.unloadModule(plug);
    EXPECT_TRUE(sees({desk}));
    m_server.plugInAgain(head.uniqueID);
    EXPECT_TRUE(sees({desk, head}));
}

TEST_F(PulseDevicesTest, ServerGoesAndComesBack_InputsFollow) {
    m_server.loadHummingMicrophone(desk.uniqueID, 500);
    look();
    EXPECT_TRUE(sees({desk}));
    m_server.kill();
    EXPECT_TRUE(sees({}));
    m_server.start();
    m_server.loadHummingMicrophone(head.uniqueID, 700);
    // Whoever looks connects again.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            look();
            return m_seen == std::vector{head};
        },
        20'000));
}

TEST_F(PulseDevicesTest, SpeakersComeAndGo_AreNoInput) {
    look(); // connects; what comes from now on is told
    m_server.loadHummingMicrophone(desk.uniqueID, 500);
    ASSERT_TRUE(sees({desk}));
    const QByteArray speakers = m_server.loadModule(u"module-null-sink sink_name=speakers norewinds=1"_s);
    m_server.unloadModule(speakers);
    m_server.loadHummingMicrophone(head.uniqueID, 700);
    // News keep their order: were the speakers any, they would have come before the second microphone.
    ASSERT_TRUE(sees({desk, head}));
    EXPECT_EQ(m_timesTold, 2);
}
