#include "input_devices.h"
#include "platform/linux/x11_injection_guard.h"
#include "platform/linux/x11_keyboards.h"
#include "support/desktop/own_server.h"
#include "tapped_keyboard.h"

#include <thread>

using namespace velmora;
using namespace velmora::modifier;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr xcb_keycode_t letterA = 38;
constexpr xcb_keycode_t letterS = 39;
constexpr xcb_keycode_t space = 65;
constexpr int keyA = 0;
constexpr int keyS = 1;
constexpr int keySpace = 49;

using X11KeyWatchTest = TappedKeyboard;

std::vector<KeyEvent> tapOf(int keyCode) {
    return {keyDown(keyCode), keyUp(keyCode)};
}

} // namespace

TEST_F(X11KeyWatchTest, KeysOfOtherPrograms_Count) {
    listen();
    Program().tap(letterA);
    EXPECT_EQ(heard(), tapOf(keyA));
}

TEST_F(X11KeyWatchTest, KeysPostedUnderAGuard_AreNotHeardButReachTheWindow) {
    listen();
    {
        const X11InjectionGuard guard;
        Program().tap(letterA);
    }
    hand.tap(letterS);
    EXPECT_EQ(heard(), tapOf(keyS));
    EXPECT_THAT(typed(), SizeIs(4));
}

TEST_F(X11KeyWatchTest, UsersKeysDuringAGuard_AreHeard) {
    listen();
    {
        const X11InjectionGuard guard;
        Program program;
        program.tap(letterA);
        hand.tap(letterS);
        program.tap(letterA);
    }
    EXPECT_EQ(heard(), tapOf(keyS));
}

TEST_F(X11KeyWatchTest, KeysOfOtherProgramsAfterAGuard_CountAgain) {
    listen();
    Program program;
    for (int i = 0; i < 20; ++i) {
        {
            const X11InjectionGuard guard;
            program.tap(letterA);
        }
        heard(); // the tap has learned of the end
        program.tap(letterS);
        EXPECT_EQ(heard(), tapOf(keyS));
    }
}

TEST_F(X11KeyWatchTest, GuardOfAnotherThread_HidesItsKeys) {
    listen();
    std::thread([] {
        const X11InjectionGuard guard;
        Program().tap(letterA);
    }).join();
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(X11KeyWatchTest, ModifierTakenAndGivenBackUnderAGuard_StaysHeld) {
    listen();
    hand.press(key::rightControl);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, control | rightControl)));
    {
        const X11InjectionGuard guard;
        X11Connection x;
        ASSERT_TRUE(setUpInputExtension(x));
        postChord(x, key::leftShift, letterA);
    }
    EXPECT_THAT(heard(), IsEmpty());
    hand.release(key::rightControl);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, 0)));
    EXPECT_EQ(hand.modifiers(), 0);
    listen(); // a key left over on the keyboard of programs is not held
    hand.tap(letterA);
    EXPECT_EQ(heard(), tapOf(keyA));
    const X11InjectionGuard guard;
    Program().tap(key::rightControl);
}

TEST_F(X11KeyWatchTest, TwoKeyboardsWithTheSameKey_DownUntilBothAreUp) {
    listen();
    hand.press(letterA);
    Program().tap(letterA);
    hand.release(letterA);
    EXPECT_THAT(heard(),
                ElementsAre(keyDown(keyA), KeyEvent{KeyEvent::Kind::KeyDown, keyA, 0, true}, keyUp(keyA)));
}

TEST_F(X11KeyWatchTest, KeyboardUnpluggedWithKeysDown_ReleasesThem) {
    listen();
    InputDevices devices;
    hand.press(key::rightControl);
    EXPECT_THAT(heard(), SizeIs(1));
    devices.setEnabled(hand.deviceID(), false);
    EXPECT_TRUE(waitUntil([&] { return !events.empty(); }));
    EXPECT_THAT(std::exchange(events, {}), ElementsAre(flagsChanged(62, 0)));
    devices.setEnabled(hand.deviceID(), true);
}

TEST_F(X11KeyWatchTest, KeyboardPluggedIn_IsHeardAndItsChordSwallowed) {
    InputDevices devices;
    devices.setEnabled(hand.deviceID(), false);
    listen();
    tap->claimChord(KeyChord{keySpace, control});
    devices.setEnabled(hand.deviceID(), true);
    EXPECT_THAT(heard(), IsEmpty());
    hand.press(key::leftControl);
    hand.tap(space);
    hand.release(key::leftControl);
    EXPECT_THAT(heard(), SizeIs(4));
    EXPECT_THAT(typed(), SizeIs(2)); // Control alone
}

TEST_F(X11KeyWatchTest, KeyboardOfASecondSession_IsHeardOnceAndItsChordSwallowed) {
    listen();
    tap->claimChord(KeyChord{keySpace, control});
    InputDevices devices;
    const auto second = devices.addMaster("second");
    ASSERT_NE(second, 0);
    devices.attach(hand.deviceID(), second);
    hand.press(key::leftControl);
    hand.tap(space);
    hand.release(key::leftControl);
    devices.attach(hand.deviceID(), InputDevices::coreKeyboard());
    devices.removeMaster(second);
    const quint64 held = control | leftControl;
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(59, held), keyDown(keySpace, held), keyUp(keySpace, held),
                                     flagsChanged(59, 0)));
}

TEST_F(X11KeyWatchTest, KeyboardDetachedByTheUser_StaysOut) {
    InputDevices devices;
    devices.detach(hand.deviceID());
    listen();
    hand.tap(letterA);
    devices.attach(hand.deviceID(), InputDevices::coreKeyboard());
    EXPECT_THAT(heard(), IsEmpty());
}

TEST(X11EventTap, ServerGone_IsDisabledAndReleasesWhatWasHeld) {
    OwnServer server;
    std::vector<KeyEvent> events;
    X11EventTapFactory factory(server.display());
    const auto tap = factory.createTap(EventTapMode::Active, [&](const KeyEvent& event) {
        events.push_back(event);
        return EventVerdict::Pass;
    });
    ASSERT_TRUE(tap);
    tap->setFnStandIn(FnStandIn::RightControl);
    tap->claimChord(KeyChord{keySpace, control});
    std::optional<PhysicalKeyboard> hand(std::in_place, server.display());
    hand->press(key::rightControl);
    ASSERT_TRUE(
        waitUntil([&] { return !events.empty() && events.back().kind == KeyEvent::Kind::FlagsChanged; }));
    events.clear();

    server.stop();
    EXPECT_TRUE(waitUntil([&] { return !tap->isEnabled(); }));
    EXPECT_THAT(events, ElementsAre(flagsChanged(62, 0)));
    tap->claimChord({});
    tap->setFnStandIn(FnStandIn::Menu);
    tap->setEnabled(true);
    EXPECT_FALSE(tap->isEnabled());
    tap->claimChord(KeyChord{keySpace, control});
    tap->setFnStandIn(FnStandIn::RightControl);

    server.startAgain();
    tap->setEnabled(true);
    EXPECT_TRUE(tap->isEnabled());
    events.clear();
    hand.emplace(server.display());
    hand->tap(key::rightControl);
    EXPECT_TRUE(waitUntil([&] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre(flagsChanged(62, fn | control | rightControl), flagsChanged(62, 0)));
}
