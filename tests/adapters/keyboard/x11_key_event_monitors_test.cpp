#include "input_devices.h"
#include "support/desktop/own_server.h"
#include "taken_keyboard.h"

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::modifier;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr xcb_keycode_t letterA = 38;
constexpr xcb_keycode_t letterP = 33;
constexpr int keyA = 0;
constexpr int keyP = 35;
constexpr int keyEscape = 53;

using X11KeyEventMonitorsTest = TakenKeyboard;

/// Another program's key grab, as window managers have for their shortcuts.
class Shortcut {
public:
    explicit Shortcut(xcb_keycode_t key) {
        xcb_grab_key(m_x.get(), false, m_x.root(), XCB_MOD_MASK_ANY, key, XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
        m_x.sync();
    }
    [[nodiscard]] bool wasPressed() {
        m_x.sync();
        bool pressed = false;
        while (const XcbEvent event = m_x.nextEvent())
            pressed = pressed || typeOf(*event) == XCB_KEY_PRESS;
        return pressed;
    }

private:
    X11Connection m_x;
};

} // namespace

TEST_F(X11KeyEventMonitorsTest, LetterAndChord_ArriveInOurCodesAndReachNoWindow) {
    watch();
    hand.tap(letterA);
    EXPECT_THAT(take(1), ElementsAre(keyDown(keyA)));
    hand.press(key::leftControl);
    hand.tap(letterP);
    hand.release(key::leftControl);
    const quint64 held = control | leftControl;
    EXPECT_THAT(take(3), ElementsAre(flagsChanged(59, held), keyDown(keyP, held), flagsChanged(59, 0)));
    hand.tap(key::escape);
    EXPECT_THAT(take(1), ElementsAre(keyDown(keyEscape)));
    endWatch();
    expectFree();
    EXPECT_THAT(typed(), IsEmpty());
}

TEST_F(X11KeyEventMonitorsTest, EachMonitor_GetsItsKindAlone) {
    std::vector<KeyEvent> flagEvents;
    keys = keyboard.addMonitor(KeyEvent::Kind::KeyDown, keep());
    flags = keyboard.addMonitor(KeyEvent::Kind::FlagsChanged,
                                [&](const KeyEvent& event) { flagEvents.push_back(event); });
    hand.press(key::rightAlt);
    hand.tap(letterA);
    hand.release(key::rightAlt);
    EXPECT_TRUE(waitUntil([&] { return flagEvents.size() == 2; }));
    EXPECT_THAT(watched, ElementsAre(keyDown(keyA, option | rightOption)));
    EXPECT_THAT(flagEvents, ElementsAre(flagsChanged(61, option | rightOption), flagsChanged(61, 0)));
}

TEST_F(X11KeyEventMonitorsTest, RightControl_PlaysNoFn) {
    watch();
    hand.tap(key::rightControl);
    EXPECT_THAT(take(2), ElementsAre(flagsChanged(62, control | rightControl), flagsChanged(62, 0)));
}

TEST_F(X11KeyEventMonitorsTest, RealFnKey_SetsTheFnBit) {
    QProcess::execute(QStringLiteral("xmodmap"),
                      {QStringLiteral("-e"), QStringLiteral("keycode 97 = XF86Fn")});
    watch();
    hand.tap(97);
    EXPECT_THAT(take(2), ElementsAre(flagsChanged(63, fn), flagsChanged(63, 0)));
    endWatch();
    expectFree();
    hand.setLayouts("us");
}

TEST_F(X11KeyEventMonitorsTest, BareCapsLock_FollowsTheKeyAndLocksNothing) {
    watch();
    hand.tap(key::capsLock);
    EXPECT_THAT(take(2), ElementsAre(flagsChanged(57, capsLock), flagsChanged(57, 0)));
    EXPECT_EQ(hand.modifiers(), XCB_MOD_MASK_LOCK);
    endWatch();
    EXPECT_TRUE(waitUntil([&] { return hand.modifiers() == 0; }));
}

TEST_F(X11KeyEventMonitorsTest, CapsLockLockedBefore_IsNotInTheFlagsAndStaysLocked) {
    hand.tap(key::capsLock);
    watch();
    hand.tap(key::rightAlt);
    EXPECT_THAT(take(2), ElementsAre(flagsChanged(61, option | rightOption), flagsChanged(61, 0)));
    hand.tap(key::capsLock);
    EXPECT_THAT(take(2), SizeIs(2));
    EXPECT_EQ(hand.modifiers(), 0);
    endWatch();
    EXPECT_TRUE(waitUntil([&] { return hand.modifiers() == XCB_MOD_MASK_LOCK; }));
    hand.tap(key::capsLock);
}

TEST_F(X11KeyEventMonitorsTest, LayoutSwitchedByACapturedChord_IsSwitchedBack) {
    QProcess::execute(QStringLiteral("setxkbmap"),
                      {QStringLiteral("-layout"), QStringLiteral("us,ru"), QStringLiteral("-option"),
                       QStringLiteral("grp:alt_shift_toggle")});
    ASSERT_EQ(hand.layout(), 0);
    watch();
    hand.press(key::leftAlt);
    hand.tap(key::leftShift);
    hand.release(key::leftAlt);
    EXPECT_THAT(take(4), SizeIs(4));
    EXPECT_EQ(hand.layout(), 1);
    endWatch();
    EXPECT_TRUE(waitUntil([&] { return hand.layout() == 0; }));
    QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("-option"), QString()});
    hand.setLayouts("us");
}

TEST_F(X11KeyEventMonitorsTest, HeldKey_IsToldOnceAndItsRepeatsReachNoWindow) {
    const FastRepeat repeat;
    watch();
    hand.press(letterA);
    expectNothingTyped();
    hand.release(letterA);
    hand.tap(letterP);
    EXPECT_THAT(take(2), ElementsAre(keyDown(keyA), keyDown(keyP)));
}

TEST_F(X11KeyEventMonitorsTest, ShortcutOfAnotherProgram_StaysQuietAndWorksAfterwards) {
    Shortcut shortcut(key::leftSuper);
    watch();
    hand.tap(key::leftSuper);
    EXPECT_THAT(take(2), SizeIs(2));
    EXPECT_FALSE(shortcut.wasPressed());
    endWatch();
    expectFree();
    hand.tap(key::leftSuper);
    EXPECT_TRUE(waitUntil([&] { return shortcut.wasPressed(); }));
}

TEST_F(X11KeyEventMonitorsTest, KeysThatProgramsType_AreTakenToo) {
    watch();
    Program().tap(letterA);
    EXPECT_THAT(take(1), ElementsAre(keyDown(keyA)));
    EXPECT_THAT(window.takeKeys(), IsEmpty());
}

TEST_F(X11KeyEventMonitorsTest, KeyboardOfASecondSession_IsTakenToo) {
    InputDevices devices;
    const auto second = devices.addMaster("second");
    ASSERT_NE(second, 0);
    devices.attach(hand.deviceID(), second);
    watch();
    hand.tap(letterA);
    EXPECT_THAT(take(1), ElementsAre(keyDown(keyA)));
    endWatch();
    expectFree();
    EXPECT_THAT(window.takeKeys(), IsEmpty());
    devices.attach(hand.deviceID(), InputDevices::coreKeyboard());
    devices.removeMaster(second);
}

TEST_F(X11KeyEventMonitorsTest, Focus_StaysWhereItIs) {
    watch();
    hand.tap(letterA);
    EXPECT_THAT(take(1), SizeIs(1));
    EXPECT_TRUE(window.hasFocus());
    endWatch();
    expectFree();
    EXPECT_TRUE(window.hasFocus());
}

TEST_F(X11KeyEventMonitorsTest, AfterTheEnd_KeysArriveAgain) {
    watch();
    hand.tap(letterA);
    EXPECT_THAT(take(1), SizeIs(1));
    endWatch();
    expectFree();
    hand.tap(letterP);
    EXPECT_THAT(typed(), SizeIs(2));
    EXPECT_THAT(watched, IsEmpty());
}

TEST_F(X11KeyEventMonitorsTest, OneOfTwoEnds_KeyboardStaysTaken) {
    watch();
    flags.reset();
    hand.tap(letterA);
    EXPECT_THAT(take(1), SizeIs(1));
    EXPECT_THAT(window.takeKeys(), IsEmpty());
}

TEST_F(X11KeyEventMonitorsTest, MonitorsEndedByTheirHandler_HeldKeyReachesNobodyUntilItIsUp) {
    const FastRepeat repeat;
    flags = keyboard.addMonitor(KeyEvent::Kind::FlagsChanged, keep());
    keys = keyboard.addMonitor(KeyEvent::Kind::KeyDown, [this](const KeyEvent& event) {
        watched.push_back(event);
        endWatch();
    });
    hand.press(letterA);
    EXPECT_THAT(take(1), ElementsAre(keyDown(keyA)));
    expectNothingTyped();
    hand.release(letterA);
    expectFree();
    EXPECT_THAT(typed(), IsEmpty());
    EXPECT_THAT(watched, IsEmpty());
    EXPECT_EQ(hand.modifiers(), 0);
}

TEST_F(X11KeyEventMonitorsTest, KeyThatNeverComesUp_GivesTheKeyboardBackAfterAll) {
    X11KeyEventMonitors impatient({}, 50ms);
    keys = impatient.addMonitor(KeyEvent::Kind::KeyDown, keep());
    hand.press(key::leftControl);
    hand.press(letterA);
    EXPECT_THAT(take(1), SizeIs(1));
    keys.reset();
    expectFree();
    hand.release(letterA);
    hand.release(key::leftControl);
    EXPECT_EQ(hand.modifiers(), 0);
}

TEST_F(X11KeyEventMonitorsTest, NewMonitorWhileAKeyIsStillAwaited_GoesOnAtOnce) {
    watch();
    hand.press(letterA);
    EXPECT_THAT(take(1), SizeIs(1));
    endWatch();
    watch();
    hand.release(letterA);
    hand.tap(letterP);
    EXPECT_THAT(take(1), ElementsAre(keyDown(keyP)));
    EXPECT_THAT(window.takeKeys(), IsEmpty());
}

TEST_F(X11KeyEventMonitorsTest, NewMonitorRightAfterTheEnd_HasTheKeyboardAgain) {
    for (int i = 0; i < 20; ++i) {
        X11KeyEventMonitors brief;
        EXPECT_TRUE(brief.addMonitor(KeyEvent::Kind::KeyDown, keep()));
    }
    expectFree();
}

TEST_F(X11KeyEventMonitorsTest, KeyboardTakenByAnotherProgram_GivesNoMonitor) {
    ASSERT_TRUE(window.grabKeyboard());
    EXPECT_FALSE(keyboard.addMonitor(KeyEvent::Kind::KeyDown, keep()));
    hand.tap(letterA);
    EXPECT_TRUE(waitUntil([this] { return typedSoFar() == 2; }));
    EXPECT_THAT(watched, IsEmpty());
}

TEST(X11KeyEventMonitors, NoServer_GivesNoMonitor) {
    X11KeyEventMonitors keyboard(":4711");
    EXPECT_FALSE(keyboard.addMonitor(KeyEvent::Kind::KeyDown, [](const KeyEvent&) {}));
}

TEST(X11KeyEventMonitors, ServerGone_IsTakenAgainOnceItIsBack) {
    OwnServer server;
    X11KeyEventMonitors keyboard(server.display());
    int heard = 0;
    const auto count = [&heard](const KeyEvent&) { ++heard; };
    auto monitor = keyboard.addMonitor(KeyEvent::Kind::KeyDown, count);
    ASSERT_TRUE(monitor);
    server.stop();
    monitor.reset();
    server.startAgain();
    EXPECT_TRUE(waitUntil([&] {
        monitor = keyboard.addMonitor(KeyEvent::Kind::KeyDown, count);
        return monitor != nullptr;
    }));
    PhysicalKeyboard hand(server.display());
    hand.tap(letterA);
    EXPECT_TRUE(waitUntil([&] { return heard == 1; }));
}
