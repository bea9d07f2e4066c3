#include "core/key_code_names.h"
#include "platform/linux/x11_injection_guard.h"
#include "platform/linux/x11_key_codes.h"
#include "tapped_keyboard.h"

#include <QProcess>

using namespace velmora;
using namespace velmora::modifier;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr xcb_keycode_t letterA = 38;
constexpr xcb_keycode_t space = 65;
constexpr int keyA = 0;
constexpr int keySpace = 49;

using X11EventTapTest = TappedKeyboard;

} // namespace

TEST_F(X11EventTapTest, EveryNamedKey_ArrivesWithItsCode) {
    listen();
    int named = 0;
    for (int keyCode = 0; keyCode < 0x80; ++keyCode) {
        if (KeyCodeNames::label(keyCode) == QStringLiteral("key %1").arg(keyCode) || keyCode == markKeyCode)
            continue;
        ++named;
        const std::vector<xcb_keycode_t> keys = X11KeyCodes::fromVirtual(keyCode);
        EXPECT_FALSE(keys.empty()) << keyCode;
        for (const xcb_keycode_t key : keys) {
            hand.tap(key);
            EXPECT_THAT(heard(), ElementsAre(keyDown(keyCode), keyUp(keyCode))) << int{key};
        }
    }
    EXPECT_EQ(named, 98); // and the mark
    hand.tap(77);         // Num Lock off again
}

TEST_F(X11EventTapTest, Modifiers_HaveTheirGenericAndDeviceBits) {
    listen();
    struct {
        xcb_keycode_t key;
        int keyCode;
        quint64 flags;
    } const modifiers[] = {{50, 56, shift | leftShift},      {62, 60, shift | rightShift},
                           {37, 59, control | leftControl},  {105, 62, control | rightControl},
                           {64, 58, option | leftOption},    {108, 61, option | rightOption},
                           {133, 55, command | leftCommand}, {134, 54, command | rightCommand}};
    for (const auto& each : modifiers) {
        hand.tap(each.key);
        EXPECT_THAT(heard(),
                    ElementsAre(flagsChanged(each.keyCode, each.flags), flagsChanged(each.keyCode, 0)));
    }
}

TEST_F(X11EventTapTest, LeftAndRightTogether_GenericBitStaysUntilBothAreUp) {
    listen();
    hand.press(64);
    hand.press(108);
    hand.release(108);
    hand.release(64);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(58, option | leftOption),
                                     flagsChanged(61, option | leftOption | rightOption),
                                     flagsChanged(61, option | leftOption), flagsChanged(58, 0)));
}

TEST_F(X11EventTapTest, FnStandIn_SetsTheFnBitBesideItsOwn) {
    listen();
    tap->setFnStandIn(FnStandIn::RightControl);
    hand.tap(105);
    hand.tap(37);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, fn | control | rightControl), flagsChanged(62, 0),
                                     flagsChanged(59, control | leftControl), flagsChanged(59, 0)));
}

TEST_F(X11EventTapTest, FnStandIn_KeyThatIsNoModifier_BecomesOne) {
    listen();
    struct {
        FnStandIn standIn;
        xcb_keycode_t key;
        int keyCode;
    } const standIns[] = {
        {FnStandIn::Menu, 135, 110}, {FnStandIn::ScrollLock, 78, 107}, {FnStandIn::Pause, 127, 113}};
    for (const auto& each : standIns) {
        tap->setFnStandIn(each.standIn);
        hand.tap(each.key);
        EXPECT_THAT(heard(), ElementsAre(flagsChanged(each.keyCode, fn), flagsChanged(each.keyCode, 0)));
        tap->setFnStandIn(FnStandIn::None);
        hand.tap(each.key);
        EXPECT_THAT(heard(), ElementsAre(keyDown(each.keyCode), keyUp(each.keyCode)));
    }
}

TEST_F(X11EventTapTest, FnStandIn_ChangedWhileHeld_IsFnUntilItIsUp) {
    listen();
    tap->setFnStandIn(FnStandIn::Menu);
    hand.press(135);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(110, fn)));
    tap->setFnStandIn(FnStandIn::RightControl);
    hand.tap(105);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, fn | control | rightControl), flagsChanged(62, fn)));
    hand.release(135);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(110, 0)));
    hand.tap(135);
    EXPECT_THAT(heard(), ElementsAre(keyDown(110), keyUp(110)));
}

TEST_F(X11EventTapTest, FnStandIn_BecomesAKeyThatIsHeld_IsFnWhenPressedAnew) {
    listen();
    hand.press(105);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, control | rightControl)));
    tap->setFnStandIn(FnStandIn::RightControl);
    hand.release(105);
    hand.tap(105);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, 0), flagsChanged(62, fn | control | rightControl),
                                     flagsChanged(62, 0)));
}

TEST_F(X11EventTapTest, CapsLock_BitFollowsTheLock) {
    listen();
    hand.tap(key::capsLock);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(57, capsLock)));
    hand.tap(letterA);
    EXPECT_THAT(heard(), ElementsAre(keyDown(keyA, capsLock), keyUp(keyA, capsLock)));
    hand.tap(key::capsLock);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(57, 0)));
}

TEST_F(X11EventTapTest, CapsLockOnAtTheStart_IsKnown) {
    hand.tap(key::capsLock);
    listen();
    hand.tap(letterA);
    EXPECT_THAT(heard(), ElementsAre(keyDown(keyA, capsLock), keyUp(keyA, capsLock)));
    hand.tap(key::capsLock);
    heard();
}

TEST_F(X11EventTapTest, HeldAtTheStart_IsKnown) {
    hand.press(105);
    listen();
    hand.tap(letterA);
    hand.release(105);
    const quint64 held = control | rightControl;
    EXPECT_THAT(heard(), ElementsAre(keyDown(keyA, held), keyUp(keyA, held), flagsChanged(62, 0)));
}

TEST_F(X11EventTapTest, FastTaps_ArriveInOrder) {
    listen();
    std::vector<KeyEvent> expected;
    for (int i = 0; i < 50; ++i) {
        hand.tap(105);
        hand.tap(letterA);
        expected.insert(expected.end(), {flagsChanged(62, control | rightControl), flagsChanged(62, 0),
                                         keyDown(keyA), keyUp(keyA)});
    }
    EXPECT_EQ(heard(), expected);
}

TEST_F(X11EventTapTest, KeyArrivesAsAPasteEnds_IsHeardAtOnce) {
    listen();
    ASSERT_THAT(heard(), IsEmpty());
    const auto type = [this] {
        hand.press(letterA);
        EXPECT_TRUE(hand.isDown(letterA));
    };
    const auto typeAndEndAPaste = [type] { // in one turn of the loop
        QMetaObject::invokeMethod(qApp, type, Qt::QueuedConnection);
        const X11InjectionGuard paste;
    };
    QMetaObject::invokeMethod(qApp, typeAndEndAPaste, Qt::QueuedConnection);
    EXPECT_TRUE(waitUntil([this] { return !events.empty(); })) << "not before the next key";
    EXPECT_THAT(heard(), ElementsAre(keyDown(keyA)));
}

TEST_F(X11EventTapTest, HeldKey_DoesNotRepeat) {
    listen();
    const FastRepeat fast;
    hand.press(letterA);
    EXPECT_TRUE(waitUntil([&] { return typedSoFar() > 5; }));
    hand.release(letterA);
    EXPECT_THAT(heard(), ElementsAre(keyDown(keyA), keyUp(keyA)));
}

TEST_F(X11EventTapTest, KeyboardGrabbedByAMenu_IsHeardAllTheSame) {
    listen();
    ASSERT_TRUE(window.grabKeyboard());
    hand.tap(105);
    hand.tap(letterA);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, control | rightControl), flagsChanged(62, 0),
                                     keyDown(keyA), keyUp(keyA)));
}

TEST_F(X11EventTapTest, RussianLayout_CodesStayThoseOfThePlaces) {
    listen();
    hand.setLayouts("us,ru", 1);
    hand.tap(letterA);
    hand.tap(34);
    EXPECT_THAT(heard(), ElementsAre(keyDown(keyA), keyUp(keyA), keyDown(33), keyUp(33)));
    hand.setLayouts("us");
}

TEST_F(X11EventTapTest, CapsLockMadeControl_IsControl) {
    listen();
    const auto setOption = [](const char* option) {
        QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("-option"), QLatin1String(option)});
    };
    setOption("ctrl:nocaps");
    heard();
    hand.press(key::capsLock);
    hand.tap(letterA);
    hand.release(key::capsLock);
    const quint64 held = control | leftControl;
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(57, held), keyDown(keyA, held), keyUp(keyA, held),
                                     flagsChanged(57, 0)));
    setOption("");
    heard();
}

TEST_F(X11EventTapTest, KeyThatGivesFn_SetsTheFnBit) {
    listen();
    QProcess::execute(QStringLiteral("xmodmap"),
                      {QStringLiteral("-e"), QStringLiteral("keycode 97 = XF86Fn")});
    heard();
    hand.tap(97);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(63, fn), flagsChanged(63, 0)));
    hand.setLayouts("us");
    heard();
}

TEST_F(X11EventTapTest, KeyOutsideTheTable_HasACodeOfItsOwn) {
    listen();
    hand.tap(180);
    EXPECT_THAT(heard(), ElementsAre(keyDown(0x1000 + 180), keyUp(0x1000 + 180)));
    EXPECT_THAT(X11KeyCodes::fromVirtual(0x1000 + 180), ElementsAre(180));
    EXPECT_THAT(X11KeyCodes::fromVirtual(0x1000 + letterA), IsEmpty());
    EXPECT_THAT(X11KeyCodes::fromVirtual(X11KeyCodes::fn), IsEmpty());
}

TEST_F(X11EventTapTest, Disabled_HearsNothingUntilItIsEnabledAgain) {
    listen();
    tap->setFnStandIn(FnStandIn::RightControl);
    hand.press(105);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, fn | control | rightControl)));
    tap->setEnabled(false);
    EXPECT_FALSE(tap->isEnabled());
    EXPECT_THAT(std::exchange(events, {}), ElementsAre(flagsChanged(62, 0)));
    hand.release(105);
    hand.tap(letterA);
    tap->setEnabled(true);
    EXPECT_TRUE(tap->isEnabled());
    hand.tap(105);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, fn | control | rightControl), flagsChanged(62, 0)));
}

TEST_F(X11EventTapTest, NoSuchDisplay_NoTap) {
    X11EventTapFactory factory(":4711");
    const auto ignore = [](const KeyEvent&) { return EventVerdict::Pass; };
    EXPECT_FALSE(factory.createTap(EventTapMode::Active, ignore));
    EXPECT_FALSE(factory.createTap(EventTapMode::ListenOnly, ignore));
}
