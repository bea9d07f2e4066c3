#include "foundation/qt_main_loop.h"
#include "platform/linux/desktop_privacy_rights.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"
#include "support/desktop/environment.h"
#include "support/desktop/private_pulse_server.h"
#include "support/fake_desktop.h"
#include "support/outcome.h"
#include "support/wait.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr auto allRights = {PrivacyRight::Microphone, PrivacyRight::InputMonitoring,
                            PrivacyRight::Accessibility, PrivacyRight::ScreenRecording};

/// The rights of a session with the given sound server; empty for the desktop's own.
class Session {
public:
    explicit Session(const QByteArray& soundServer = {})
        : connection(soundServer) {}

    bool answer(Task<bool> task) {
        const Outcome<bool> outcome(std::move(task));
        EXPECT_TRUE(waitUntil([&] { return outcome.isDone(); }));
        return outcome.value();
    }
    bool comesTo(PrivacyRight right, bool granted) {
        return waitUntil([&] { return rights.isGranted(right) == granted; });
    }

    QtMainLoop loop;
    FakeWorkspace workspace;
    PulseConnection connection;
    PulseDevices devices{connection};
    DesktopPrivacyRights rights{loop, connection, devices, workspace};
};

class SoundRightsTest : public testing::Test {
protected:
    QByteArray plugInOutput() const {
        return server.loadModule(QStringLiteral("module-null-sink sink_name=out norewinds=1"));
    }

    PrivatePulseServer server;
    Session session{server.address()};
    DesktopPrivacyRights& rights = session.rights;
};

} // namespace

TEST(DesktopPrivacyRights, DesktopWithEverything_AllAreGranted) {
    Session session;
    for (const PrivacyRight right : allRights) {
        EXPECT_TRUE(session.comesTo(right, true)) << int(right);
        EXPECT_TRUE(session.answer(session.rights.probe(right))) << int(right);
        EXPECT_TRUE(session.answer(session.rights.request(right))) << int(right);
    }
}

TEST(DesktopPrivacyRights, NoXServer_KeysAreNotWatchedAndNothingIsPasted) {
    const Environment display("DISPLAY", QByteArray());
    Session session;
    for (const PrivacyRight right : {PrivacyRight::InputMonitoring, PrivacyRight::Accessibility}) {
        EXPECT_FALSE(session.rights.isGranted(right));
        EXPECT_FALSE(session.answer(session.rights.probe(right)));
        EXPECT_FALSE(session.answer(session.rights.request(right)));
    }
    EXPECT_TRUE(session.comesTo(PrivacyRight::Microphone, true));
}

TEST(DesktopPrivacyRights, XServerWithinAWaylandSession_KeysAreNotWatched) {
    const Environment wayland("WAYLAND_DISPLAY", "wayland-0");
    Session session;
    EXPECT_FALSE(session.rights.isGranted(PrivacyRight::InputMonitoring));
    EXPECT_TRUE(session.rights.isGranted(PrivacyRight::Accessibility));
}

TEST(DesktopPrivacyRights, NoSoundServer_NeitherMicrophoneNorPlayback) {
    Session session("unix:/nowhere/native");
    EXPECT_FALSE(session.rights.isGranted(PrivacyRight::Microphone));
    EXPECT_FALSE(session.rights.isGranted(PrivacyRight::ScreenRecording));
    EXPECT_FALSE(session.answer(session.rights.probe(PrivacyRight::Microphone)));
    EXPECT_FALSE(session.answer(session.rights.probe(PrivacyRight::ScreenRecording)));
}

TEST_F(SoundRightsTest, ServerWithoutDevices_NeitherMicrophoneNorPlayback) {
    EXPECT_FALSE(session.answer(rights.probe(PrivacyRight::Microphone)));
    EXPECT_FALSE(session.answer(rights.probe(PrivacyRight::ScreenRecording)));
    EXPECT_FALSE(rights.isGranted(PrivacyRight::Microphone));
    EXPECT_FALSE(rights.isGranted(PrivacyRight::ScreenRecording));
}

TEST_F(SoundRightsTest, OutputWithoutInput_ItsMonitorIsNoMicrophone) {
    plugInOutput();
    EXPECT_TRUE(session.comesTo(PrivacyRight::ScreenRecording, true));
    EXPECT_FALSE(rights.isGranted(PrivacyRight::Microphone));
    EXPECT_TRUE(session.answer(rights.probe(PrivacyRight::ScreenRecording)));
    EXPECT_FALSE(session.answer(rights.probe(PrivacyRight::Microphone)));
}

TEST_F(SoundRightsTest, DevicesThatComeAndGo_AreNoticed) {
    EXPECT_FALSE(rights.isGranted(PrivacyRight::Microphone));
    bool told = false;  // what a receiver of the signal has found last
    const QObject here; // the signal comes from the sound thread
    QObject::connect(&session.devices, &PulseDevices::changed, &here,
                     [&] { told = rights.isGranted(PrivacyRight::Microphone); });
    const QByteArray microphone = server.loadHummingMicrophone(QStringLiteral("mic"), 500);
    EXPECT_TRUE(waitUntil([&] { return told; }));
    server.unloadModule(microphone);
    EXPECT_TRUE(waitUntil([&] { return !told; }));
    EXPECT_FALSE(session.answer(rights.request(PrivacyRight::Microphone)));
}

TEST_F(SoundRightsTest, ServerThatEnds_TakesTheRightsAndItsReturnBringsThemBack) {
    server.loadHummingMicrophone(QStringLiteral("mic"), 500);
    plugInOutput();
    ASSERT_TRUE(session.comesTo(PrivacyRight::Microphone, true));
    server.kill();
    EXPECT_TRUE(session.comesTo(PrivacyRight::Microphone, false));
    EXPECT_FALSE(rights.isGranted(PrivacyRight::ScreenRecording));
    EXPECT_FALSE(session.answer(rights.probe(PrivacyRight::ScreenRecording)));
    server.start();
    server.loadHummingMicrophone(QStringLiteral("mic"), 500);
    EXPECT_TRUE(session.answer(rights.request(PrivacyRight::Microphone)));
    EXPECT_TRUE(session.comesTo(PrivacyRight::Microphone, true));
}

TEST_F(SoundRightsTest, ServerThatHangs_HoldsUpOnlyTheProbe) {
    server.loadHummingMicrophone(QStringLiteral("mic"), 500);
    server.freeze();
    EXPECT_FALSE(rights.isGranted(PrivacyRight::Microphone));
    const Outcome<bool> probe(rights.probe(PrivacyRight::Microphone));
    bool turned = false; // the main loop runs meanwhile
    session.loop.post([&] { turned = !probe.isDone(); });
    EXPECT_TRUE(waitUntil([&] { return probe.isDone(); }));
    EXPECT_TRUE(turned);
    EXPECT_FALSE(probe.value());
    server.thaw();
    EXPECT_TRUE(session.comesTo(PrivacyRight::Microphone, true));
    EXPECT_TRUE(session.answer(rights.probe(PrivacyRight::Microphone)));
}
