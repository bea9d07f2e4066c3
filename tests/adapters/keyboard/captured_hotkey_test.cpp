#include "core/app_settings.h"
#include "core/hotkey_monitor.h"
#include "core/hotkey_recorder.h"
#include "foundation/qt_main_loop.h"
#include "taken_keyboard.h"

#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::modifier;
using namespace velmora::test;
using testing::Contains;
using testing::Not;

namespace {

constexpr xcb_keycode_t letterP = 33;
constexpr xcb_keycode_t menuKey = 135;
constexpr xcb_keycode_t mailKey = 163; // in no table
constexpr int keyP = 35;

/// From the capture through the settings to the hotkey itself.
class CapturedHotkeyTest : public TakenKeyboard {
protected:
    CapturedHotkeyTest() {
        settings.setHotkey(QStringLiteral("custom"));
        hotkey.onPress = [this] { ++presses; };
        hotkey.onRelease = [this] { ++releases; };
        hotkey.start();
    }

    void capture() {
        hotkey.setSuspended(true);
        recorder.start([this](const CapturedHotkey& captured) {
            settings.setHotkeyCustomMask(static_cast<qint64>(captured.mask));
            settings.setHotkeyCustomKeyCode(captured.keyCode);
            settings.setHotkeyCustomLabel(captured.label);
            hotkey.setSuspended(false);
        });
    }
    void press(std::initializer_list<xcb_keycode_t> chord) {
        for (const xcb_keycode_t key : chord)
            hand.press(key);
    }
    void release(std::initializer_list<xcb_keycode_t> chord) {
        for (const xcb_keycode_t key : chord)
            hand.release(key);
    }
    void expectCaptured(const char* label) {
        EXPECT_TRUE(waitUntil([this] { return !recorder.isRecording(); }));
        EXPECT_EQ(settings.hotkeyCustomLabel(), QString::fromUtf8(label));
    }
    void expectPressAndRelease(std::initializer_list<xcb_keycode_t> chord) {
        expectFree();
        EXPECT_EQ(presses, 0);
        press(chord);
        EXPECT_TRUE(waitUntil([this] { return presses == 1; }));
        release(chord);
        EXPECT_TRUE(waitUntil([this] { return releases == 1; }));
        EXPECT_EQ(presses, 1);
        EXPECT_EQ(hand.modifiers(), 0);
    }

    QtMainLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    AppSettings settings{defaults};
    X11EventTapFactory taps;
    HotkeyMonitor hotkey{loop, defaults, taps};
    HotkeyRecorder recorder{keyboard};
    int presses = 0;
    int releases = 0;
};

} // namespace

TEST_F(CapturedHotkeyTest, KeysOfNoTable_GetANumberAndWorkAsChords) {
    capture();
    press({key::leftControl, mailKey});
    expectCaptured("⌃ key 4259");
    release({mailKey, key::leftControl});
    expectPressAndRelease({key::leftControl, mailKey});
}

TEST_F(CapturedHotkeyTest, MenuKey_GetsANumberAndWorksAsAChord) {
    capture();
    press({key::leftSuper, menuKey});
    expectCaptured("⌘ key 110");
    release({menuKey, key::leftSuper});
    expectPressAndRelease({key::leftSuper, menuKey});
    EXPECT_THAT(typed(), Not(Contains(KeyWindow::Key{true, menuKey, XCB_MOD_MASK_4})));
}

TEST_F(CapturedHotkeyTest, BareModifier_WorksAlone) {
    capture();
    hand.tap(key::rightAlt);
    expectCaptured("Right ⌥");
    expectPressAndRelease({key::rightAlt});
}

TEST_F(CapturedHotkeyTest, ChordHeldOnAfterTheCapture_IsTypedNowhereAndPressesOnlyWhenPressedAnew) {
    const FastRepeat repeat;
    capture();
    press({key::leftControl, letterP});
    expectCaptured("⌃ P");
    expectNothingTyped();
    release({letterP, key::leftControl});
    expectPressAndRelease({key::leftControl, letterP});
    for (const KeyWindow::Key& each : typed())
        EXPECT_NE(each.key, letterP);
}

TEST_F(CapturedHotkeyTest, HotkeyCapturedAnew_DoesNotStartADictationMeanwhile) {
    settings.setHotkeyCustomKeyCode(keyP);
    settings.setHotkeyCustomMask(static_cast<qint64>(control));
    capture();
    press({key::leftControl, letterP});
    expectCaptured("⌃ P");
    release({letterP, key::leftControl});
    expectPressAndRelease({key::leftControl, letterP});
}
