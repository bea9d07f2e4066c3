#include "platform/linux/x11_event_tap_factory.h"
#include "platform/linux/x11_rights.h"
#include "support/desktop/own_server.h"
#include "support/desktop/wait_until.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

int connectionsMade = 0;

} // namespace

// Takes the library's place in this program, to count.
extern "C" xcb_connection_t* xcb_connect(const char* display, int* screen) {
    ++connectionsMade;
    static const auto real = reinterpret_cast<decltype(&xcb_connect)>(dlsym(RTLD_NEXT, "xcb_connect"));
    return real(display, screen);
}

namespace velmora::test {
namespace {

constexpr const char* nowhere = ":987654";

std::unique_ptr<EventTap> makeTap(X11EventTapFactory& factory, EventTapMode mode = EventTapMode::Active) {
    return factory.createTap(mode, [](const KeyEvent&) { return EventVerdict::Pass; });
}

class ConnectionsMade : public testing::Test {
protected:
    ConnectionsMade() { connectionsMade = 0; }
};

TEST_F(ConnectionsMade, RightsAskedAgainAndAgain_One) {
    const OwnServer server;
    X11Rights rights(server.display());
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(rights.canWatchKeys());
        EXPECT_TRUE(rights.canPostPastes());
    }
    EXPECT_EQ(connectionsMade, 1);
}

TEST_F(ConnectionsMade, RightsOfAServerThatGoesAndComesBack_FollowIt) {
    OwnServer server;
    X11Rights rights(server.display());
    EXPECT_TRUE(rights.canPostPastes());
    server.stop();
    EXPECT_FALSE(rights.canPostPastes());
    server.startAgain();
    EXPECT_TRUE(rights.canPostPastes());
    EXPECT_TRUE(rights.canWatchKeys());
    EXPECT_EQ(connectionsMade, 3);
}

TEST_F(ConnectionsMade, RightsWithoutAServer_TwoAndThenAPause) {
    X11Rights rights(nowhere);
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(rights.canWatchKeys());
        EXPECT_FALSE(rights.canPostPastes());
    }
    EXPECT_EQ(connectionsMade, 2);
}

TEST_F(ConnectionsMade, TapsWithoutAServer_TwoAndThenAPause) {
    X11EventTapFactory factory(nowhere);
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(makeTap(factory));
        EXPECT_FALSE(makeTap(factory, EventTapMode::ListenOnly));
    }
    EXPECT_EQ(connectionsMade, 2);
}

TEST_F(ConnectionsMade, TapEnabledAgainAfterItsServerWent_TwoAndThenAPause) {
    OwnServer server;
    X11EventTapFactory factory(server.display());
    const auto tap = makeTap(factory);
    ASSERT_TRUE(tap);
    server.stop();
    ASSERT_TRUE(waitUntil([&] { return !tap->isEnabled(); }));
    connectionsMade = 0;
    for (int i = 0; i < 5; ++i)
        tap->setEnabled(true);
    EXPECT_FALSE(tap->isEnabled());
    EXPECT_EQ(connectionsMade, 2);
}

} // namespace
} // namespace velmora::test
