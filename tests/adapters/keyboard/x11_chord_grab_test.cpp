#include "platform/linux/x11_keyboards.h"
#include "tapped_keyboard.h"

#include <QElapsedTimer>
#include <QProcess>

using namespace velmora;
using namespace velmora::modifier;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr xcb_keycode_t letterA = 38;
constexpr xcb_keycode_t space = 65;
constexpr xcb_keycode_t f8 = 74;
constexpr xcb_keycode_t numLock = 77;
constexpr xcb_keycode_t scrollLock = 78;
constexpr xcb_keycode_t menu = 135;
constexpr int keyA = 0;
constexpr int keySpace = 49;
constexpr int keyF8 = 100;
constexpr int keyMenu = 110;
constexpr quint64 leftControlHeld = control | leftControl;
constexpr uint16_t controlMask = XCB_MOD_MASK_CONTROL;

KeyWindow::Key press(xcb_keycode_t key, uint16_t modifiers = 0) {
    return {true, key, modifiers};
}
KeyWindow::Key release(xcb_keycode_t key, uint16_t modifiers = 0) {
    return {false, key, modifiers};
}

class X11ChordGrabTest : public TappedKeyboard {
protected:
    void claim(int keyCode, quint64 mask) {
        listen();
        tap->claimChord(KeyChord{keyCode, mask});
    }
    // Control+Space, the modifier held longer than the key.
    void strikeChord() {
        hand.press(key::leftControl);
        hand.tap(space);
        hand.release(key::leftControl);
    }
    // Those of programs included.
    static X11Keys downOnAnyKeyboard() {
        X11Connection x;
        EXPECT_TRUE(setUpInputExtension(x));
        X11Keys all;
        for (const X11Keys& each : pressedKeys(x, x11Keyboards(x)))
            all |= each;
        return all;
    }
    static std::vector<KeyEvent> chordHeard(quint64 others = 0) {
        return {flagsChanged(59, leftControlHeld | others), keyDown(keySpace, leftControlHeld | others),
                keyUp(keySpace, leftControlHeld | others), flagsChanged(59, others)};
    }
    static std::vector<KeyWindow::Key> onlyControl(uint16_t locks = 0) {
        return {press(key::leftControl, locks), release(key::leftControl, locks | controlMask)};
    }
};

} // namespace

TEST_F(X11ChordGrabTest, Unclaimed_ReachesTheWindow) {
    listen();
    strikeChord();
    EXPECT_EQ(heard(), chordHeard());
    EXPECT_THAT(typed(), ElementsAre(press(key::leftControl), press(space, controlMask),
                                     release(space, controlMask), release(key::leftControl, controlMask)));
}

TEST_F(X11ChordGrabTest, Claimed_IsHeardOnceAndDoesNotReachTheWindow) {
    claim(keySpace, control);
    for (int i = 0; i < 3; ++i) {
        strikeChord();
        EXPECT_EQ(heard(), chordHeard());
        EXPECT_EQ(typed(), onlyControl());
    }
    EXPECT_EQ(window.focusLosses(), 0);
}

TEST_F(X11ChordGrabTest, KeyAlone_ReachesTheWindow) {
    claim(keySpace, control);
    hand.tap(space);
    EXPECT_THAT(typed(), ElementsAre(press(space), release(space)));
}

TEST_F(X11ChordGrabTest, RightModifier_IsAsGoodAsTheLeft) {
    claim(keySpace, control);
    hand.press(key::rightControl);
    hand.tap(space);
    hand.release(key::rightControl);
    EXPECT_THAT(typed(), ElementsAre(press(key::rightControl), release(key::rightControl, controlMask)));
}

TEST_F(X11ChordGrabTest, ClaimGivenUp_ReachesTheWindowAgain) {
    claim(keySpace, control);
    tap->claimChord({});
    strikeChord();
    EXPECT_EQ(typed().size(), 4U);
}

TEST_F(X11ChordGrabTest, ClaimGivenUpWhileHeld_KeyUpIsHeardAndNothingLeaks) {
    claim(keySpace, control);
    hand.press(key::leftControl);
    hand.press(space);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(59, leftControlHeld), keyDown(keySpace, leftControlHeld)));
    tap->claimChord({});
    hand.release(space);
    hand.release(key::leftControl);
    EXPECT_THAT(heard(), ElementsAre(keyUp(keySpace, leftControlHeld), flagsChanged(59, 0)));
    EXPECT_EQ(typed(), onlyControl());
    EXPECT_EQ(hand.modifiers(), 0);
}

TEST_F(X11ChordGrabTest, ClaimGivenUpWhileOtherKeysAreHeld_NoneStaysDown) {
    claim(keyF8, 0);
    hand.press(f8);
    hand.press(key::leftShift);
    hand.press(letterA);
    EXPECT_EQ(heard().size(), 3U);
    tap->claimChord({});
    hand.release(f8);
    EXPECT_EQ(heard().size(), 1U);
    hand.release(letterA);
    hand.release(key::leftShift);
    EXPECT_EQ(heard().size(), 2U);
    EXPECT_TRUE(downOnAnyKeyboard().none());
    EXPECT_THAT(typed(), ElementsAre(press(key::leftShift), press(letterA, XCB_MOD_MASK_SHIFT),
                                     release(letterA, XCB_MOD_MASK_SHIFT),
                                     release(key::leftShift, XCB_MOD_MASK_SHIFT)));
}

TEST_F(X11ChordGrabTest, AnotherChordClaimed_TheFirstIsFree) {
    claim(keySpace, control);
    tap->claimChord(KeyChord{keyF8, 0});
    strikeChord();
    hand.tap(f8);
    EXPECT_THAT(typed(), ElementsAre(press(key::leftControl), press(space, controlMask),
                                     release(space, controlMask), release(key::leftControl, controlMask)));
}

TEST_F(X11ChordGrabTest, FunctionKeyAlone_IsSwallowed) {
    claim(keyF8, 0);
    hand.tap(f8);
    EXPECT_THAT(heard(), ElementsAre(keyDown(keyF8), keyUp(keyF8)));
    EXPECT_THAT(typed(), IsEmpty());
}

TEST_F(X11ChordGrabTest, FurtherModifiersHeld_IsSwallowed) {
    claim(keySpace, control);
    hand.press(key::leftShift);
    strikeChord();
    hand.release(key::leftShift);
    EXPECT_THAT(typed(), ElementsAre(press(key::leftShift), press(key::leftControl, XCB_MOD_MASK_SHIFT),
                                     release(key::leftControl, XCB_MOD_MASK_SHIFT | controlMask),
                                     release(key::leftShift, XCB_MOD_MASK_SHIFT)));
}

TEST_F(X11ChordGrabTest, SeveralModifiers_AllMustBeHeld) {
    claim(keySpace, control | option);
    strikeChord();
    EXPECT_EQ(typed().size(), 4U);
    hand.press(key::leftAlt);
    strikeChord();
    hand.release(key::leftAlt);
    EXPECT_EQ(typed().size(), 4U); // the modifiers alone
}

TEST_F(X11ChordGrabTest, LocksOn_IsSwallowed) {
    claim(keySpace, control);
    hand.tap(numLock);
    hand.tap(key::capsLock);
    heard();
    typed();
    strikeChord();
    EXPECT_EQ(heard(), chordHeard(capsLock));
    EXPECT_EQ(typed(), onlyControl(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
    hand.tap(numLock);
    hand.tap(key::capsLock);
    heard();
}

TEST_F(X11ChordGrabTest, RussianLayoutActive_IsSwallowed) {
    claim(keyA, control);
    hand.setLayouts("us,ru", 1);
    heard();
    hand.press(key::leftControl);
    hand.tap(letterA);
    hand.release(key::leftControl);
    EXPECT_EQ(typed(), onlyControl(XCB_MOD_MASK_5)); // by which the server tells of the second layout
    hand.setLayouts("us");
    heard();
}

TEST_F(X11ChordGrabTest, CapsLockMadeControl_IsSwallowed) {
    claim(keySpace, control);
    const auto setOption = [](const char* option) {
        QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("-option"), QLatin1String(option)});
    };
    setOption("ctrl:nocaps");
    heard();
    typed();
    hand.press(key::capsLock);
    hand.tap(space);
    hand.release(key::capsLock);
    EXPECT_THAT(typed(), ElementsAre(press(key::capsLock), release(key::capsLock, controlMask)));
    setOption("");
    heard();
}

TEST_F(X11ChordGrabTest, MenuOpen_IsSwallowed) {
    claim(keySpace, control);
    ASSERT_TRUE(window.grabKeyboard());
    strikeChord();
    EXPECT_EQ(heard(), chordHeard());
    EXPECT_EQ(typed(), onlyControl());
}

TEST_F(X11ChordGrabTest, ModifierReleasedFirst_DoesNotStayDown) {
    claim(keySpace, control);
    hand.press(key::leftControl);
    hand.press(space);
    hand.release(key::leftControl);
    hand.release(space);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(59, leftControlHeld), keyDown(keySpace, leftControlHeld),
                                     flagsChanged(59, 0), keyUp(keySpace)));
    EXPECT_EQ(hand.modifiers(), 0);
    EXPECT_EQ(typed(), onlyControl());
    hand.tap(letterA);
    EXPECT_THAT(typed(), ElementsAre(press(letterA), release(letterA)));
}

TEST_F(X11ChordGrabTest, KeyHeld_NoRepeatReachesAnyone) {
    const FastRepeat fast;
    listen();
    QElapsedTimer repeats;
    repeats.start();
    hand.press(space);
    ASSERT_TRUE(waitUntil([&] { return typedSoFar() > 5; }));
    hand.release(space);
    const qint64 timeForFiveRepeats = repeats.elapsed();
    heard();
    typed();

    tap->claimChord(KeyChord{keySpace, control});
    hand.press(key::leftControl);
    hand.press(space);
    repeats.start();
    waitUntil([&] { return repeats.elapsed() > timeForFiveRepeats; });
    hand.release(key::leftControl); // the rest of the repeats come without it
    repeats.start();
    waitUntil([&] { return repeats.elapsed() > timeForFiveRepeats; });
    hand.release(space);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(59, leftControlHeld), keyDown(keySpace, leftControlHeld),
                                     flagsChanged(59, 0), keyUp(keySpace)));
    EXPECT_EQ(typed(), onlyControl());
}

TEST_F(X11ChordGrabTest, OtherKeysWhileItIsHeld_ReachTheWindowAndAreHeardOnce) {
    claim(keyF8, 0);
    hand.press(f8);
    hand.tap(letterA);
    hand.press(key::leftShift);
    hand.tap(letterA);
    EXPECT_THAT(heard(),
                ElementsAre(keyDown(keyF8), keyDown(keyA), keyUp(keyA), flagsChanged(56, shift | leftShift),
                            keyDown(keyA, shift | leftShift), keyUp(keyA, shift | leftShift)));
    hand.release(f8);
    hand.tap(letterA); // Shift is still held
    hand.release(key::leftShift);
    EXPECT_EQ(heard().size(), 4U);
    EXPECT_THAT(typed(), ElementsAre(press(letterA), release(letterA), press(key::leftShift),
                                     press(letterA, XCB_MOD_MASK_SHIFT), release(letterA, XCB_MOD_MASK_SHIFT),
                                     press(letterA, XCB_MOD_MASK_SHIFT), release(letterA, XCB_MOD_MASK_SHIFT),
                                     release(key::leftShift, XCB_MOD_MASK_SHIFT)));
    EXPECT_EQ(hand.modifiers(), 0);
}

TEST_F(X11ChordGrabTest, ModifierAddedToTheHeldKey_NothingStaysDown) {
    const FastRepeat fast;
    claim(keySpace, control);
    hand.press(space);
    ASSERT_TRUE(waitUntil([&] { return typedSoFar() > 2; }));
    hand.press(key::leftControl);
    hand.release(space);
    hand.release(key::leftControl);
    heard();
    EXPECT_FALSE(hand.isDown(space));
    EXPECT_EQ(hand.modifiers(), 0);
}

TEST_F(X11ChordGrabTest, StruckAcrossTwoKeyboards_IsSwallowed) {
    claim(keySpace, control);
    Program program;
    program.press(key::leftControl);
    hand.tap(space);
    std::vector<KeyEvent> all = heard();
    program.release(key::leftControl);
    std::ranges::copy(heard(), std::back_inserter(all));
    EXPECT_EQ(all, chordHeard());
    EXPECT_EQ(typed(), onlyControl());
}

TEST_F(X11ChordGrabTest, TypedByAProgram_IsSwallowedAndHeardOnce) {
    claim(keySpace, control);
    Program program;
    program.press(key::leftControl);
    program.tap(space);
    program.release(key::leftControl);
    EXPECT_EQ(heard(), chordHeard());
    EXPECT_EQ(typed(), onlyControl());
}

TEST_F(X11ChordGrabTest, GrabbedByAnotherProgramBefore_IsLeftToItAndHeard) {
    X11Connection other;
    xcb_grab_key(other.get(), false, other.root(), controlMask, space, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    [[maybe_unused]] const QByteArray sync = other.atomName(XCB_ATOM_STRING);
    claim(keySpace, control);
    Program program;
    program.press(key::leftControl);
    program.tap(space);
    program.release(key::leftControl);
    EXPECT_EQ(heard(), chordHeard());
    EXPECT_EQ(typed(), onlyControl());
    strikeChord();
    EXPECT_EQ(heard(), chordHeard());
    EXPECT_EQ(typed(), onlyControl());
}

TEST_F(X11ChordGrabTest, FnAlone_ItsStandInIsSwallowed) {
    claim(-1, fn);
    constexpr struct {
        FnStandIn standIn;
        xcb_keycode_t key;
        int keyCode;
    } standIns[] = {{FnStandIn::Menu, menu, keyMenu},
                    {FnStandIn::ScrollLock, scrollLock, 107},
                    {FnStandIn::Pause, 127, 113}};
    for (const auto& each : standIns) {
        tap->setFnStandIn(each.standIn);
        for (int i = 0; i < 3; ++i) {
            hand.tap(each.key);
            EXPECT_THAT(heard(), ElementsAre(flagsChanged(each.keyCode, fn), flagsChanged(each.keyCode, 0)));
        }
        EXPECT_THAT(typed(), IsEmpty());
    }
    hand.tap(menu);
    hand.tap(scrollLock);
    EXPECT_EQ(typed().size(), 4U);
    EXPECT_EQ(window.focusLosses(), 0);
}

TEST_F(X11ChordGrabTest, FnAlone_KeysTypedWhileItsStandInIsHeld_ReachTheWindow) {
    claim(-1, fn);
    tap->setFnStandIn(FnStandIn::Menu);
    hand.press(menu);
    hand.press(key::leftShift);
    hand.tap(letterA);
    EXPECT_EQ(heard().size(), 4U);
    hand.release(menu);
    hand.tap(letterA); // Shift is still held
    hand.release(key::leftShift);
    EXPECT_THAT(heard(),
                ElementsAre(flagsChanged(keyMenu, shift | leftShift), keyDown(keyA, shift | leftShift),
                            keyUp(keyA, shift | leftShift), flagsChanged(56, 0)));
    EXPECT_THAT(typed(), ElementsAre(press(key::leftShift), press(letterA, XCB_MOD_MASK_SHIFT),
                                     release(letterA, XCB_MOD_MASK_SHIFT), press(letterA, XCB_MOD_MASK_SHIFT),
                                     release(letterA, XCB_MOD_MASK_SHIFT),
                                     release(key::leftShift, XCB_MOD_MASK_SHIFT)));
    EXPECT_TRUE(downOnAnyKeyboard().none());
}

TEST_F(X11ChordGrabTest, FnAlone_StandInThatIsAModifier_RemainsOne) {
    claim(-1, fn);
    tap->setFnStandIn(FnStandIn::RightControl);
    hand.press(key::rightControl);
    hand.tap(letterA);
    hand.release(key::rightControl);
    EXPECT_THAT(typed(), ElementsAre(press(key::rightControl), press(letterA, controlMask),
                                     release(letterA, controlMask), release(key::rightControl, controlMask)));
}

TEST_F(X11ChordGrabTest, AnotherModifierIsTheHotkey_FnsStandInReachesTheWindow) {
    claim(-1, rightOption);
    tap->setFnStandIn(FnStandIn::Menu);
    hand.tap(menu);
    EXPECT_THAT(typed(), ElementsAre(press(menu), release(menu)));
}

TEST_F(X11ChordGrabTest, FnAloneGivenUpWhileItsStandInIsHeld_ItsReleaseIsHeardAndNothingLeaks) {
    claim(-1, fn);
    tap->setFnStandIn(FnStandIn::Menu);
    hand.press(menu);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(keyMenu, fn)));
    tap->claimChord({});
    tap->setFnStandIn(FnStandIn::RightControl);
    hand.release(menu);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(keyMenu, 0)));
    EXPECT_THAT(typed(), IsEmpty());
    hand.tap(menu);
    EXPECT_THAT(typed(), ElementsAre(press(menu), release(menu)));
}

TEST_F(X11ChordGrabTest, FnChord_IsSwallowedWithTheStandIn) {
    claim(keySpace, fn);
    tap->setFnStandIn(FnStandIn::Menu);
    for (int i = 0; i < 3; ++i) {
        hand.press(menu);
        hand.tap(space);
        hand.release(menu);
        EXPECT_THAT(heard(), ElementsAre(flagsChanged(keyMenu, fn), keyDown(keySpace, fn),
                                         keyUp(keySpace, fn), flagsChanged(keyMenu, 0)));
        EXPECT_THAT(typed(), IsEmpty());
    }
    EXPECT_EQ(window.focusLosses(), 0);
    hand.tap(space);
    EXPECT_THAT(typed(), ElementsAre(press(space), release(space)));
}

TEST_F(X11ChordGrabTest, FnChord_StandInReleasedFirst_NothingLeaks) {
    const FastRepeat fast;
    claim(keySpace, fn);
    tap->setFnStandIn(FnStandIn::Menu);
    hand.press(menu);
    hand.press(space);
    hand.release(menu);
    QElapsedTimer repeats;
    repeats.start();
    waitUntil([&] { return repeats.elapsed() > 200; });
    hand.release(space);
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(keyMenu, fn), keyDown(keySpace, fn),
                                     flagsChanged(keyMenu, 0), keyUp(keySpace)));
    EXPECT_THAT(typed(), IsEmpty());
    EXPECT_TRUE(downOnAnyKeyboard().none());
    hand.tap(space);
    EXPECT_THAT(typed(), ElementsAre(press(space), release(space)));
}

TEST_F(X11ChordGrabTest, FnChordWithAStandInThatIsAModifier_OnlyItsKeyIsSwallowed) {
    claim(keySpace, fn);
    tap->setFnStandIn(FnStandIn::RightControl);
    hand.press(key::rightControl);
    const quint64 held = fn | control | rightControl;
    EXPECT_THAT(heard(), ElementsAre(flagsChanged(62, held)));
    hand.tap(space);
    hand.release(key::rightControl);
    EXPECT_THAT(heard(), ElementsAre(keyDown(keySpace, held), keyUp(keySpace, held), flagsChanged(62, 0)));
    EXPECT_THAT(typed(), ElementsAre(press(key::rightControl), release(key::rightControl, controlMask)));
    strikeChord();
    EXPECT_EQ(typed().size(), 4U) << "with the left one it is another chord";
}

TEST_F(X11ChordGrabTest, ChordStruckWhileAnotherGrabbedKeyIsHeld_IsSwallowed) {
    claim(keyF8, fn | control);
    tap->setFnStandIn(FnStandIn::Menu);
    hand.press(menu);
    hand.tap(f8); // without Control it is another chord
    hand.press(key::leftControl);
    hand.tap(f8);
    hand.release(key::leftControl);
    hand.release(menu);
    EXPECT_THAT(typed(), ElementsAre(press(f8), release(f8), press(key::leftControl),
                                     release(key::leftControl, controlMask)));
}

TEST_F(X11ChordGrabTest, ListenOnly_SwallowsNothing) {
    listen(EventTapMode::ListenOnly);
    tap->claimChord(KeyChord{keySpace, control});
    strikeChord();
    EXPECT_EQ(heard(), chordHeard());
    EXPECT_EQ(typed().size(), 4U);
}

TEST_F(X11ChordGrabTest, TapGone_ReachesTheWindowAgain) {
    claim(keySpace, control);
    tap.reset();
    strikeChord();
    EXPECT_EQ(typed().size(), 4U);
}

TEST_F(X11ChordGrabTest, TapEnabledAgain_StillClaims) {
    claim(keySpace, control);
    tap->setEnabled(false);
    tap->setEnabled(true);
    strikeChord();
    EXPECT_EQ(typed(), onlyControl());
}
