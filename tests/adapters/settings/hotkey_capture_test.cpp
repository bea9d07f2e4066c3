#include "platform/linux/x11_key_event_monitors.h"
#include "support/desktop/key_window.h"
#include "support/desktop/physical_keyboard.h"
#include "support/desktop/wait_until.h"
#include "support/settings_stage.h"
#include "support/ui/view_host.h"
#include "ui/settings/recording_settings_model.h"

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr xcb_keycode_t letterP = 33;

/// The recording settings in a real window, on a page whose Esc is somebody else's, and a real keyboard.
class HotkeyCaptureTest : public testing::Test {
protected:
    HotkeyCaptureTest() {
        host.showSource("import QtQuick\nimport Velmora.Settings\n"
                        "FocusScope { id: page; required property RecordingSettingsModel model;"
                        " property int escapes: 0; property int letters: 0; focus: true; implicitWidth: 660; "
                        "implicitHeight: 700\n"
                        "Keys.onEscapePressed: escapes++\n"
                        "Keys.onPressed: (event) => { if (event.key === Qt.Key_P) letters++ }\n"
                        "SettingsRecordingView { width: parent.width; model: page.model } }",
                        {{QStringLiteral("model"), QVariant::fromValue(&model)}});
        host.click(QStringLiteral("Изменить"));
    }
    [[nodiscard]] bool captures(const char* label) {
        return waitUntil([&] { return settings.hotkeyCustomLabel() == QString::fromUtf8(label); });
    }

    HandLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    AuthStore auth{folder.path(), defaults};
    FakeWorkspace workspace;
    InfoDictionary info{{}};
    SettingsStage stage{loop, defaults, settings, auth, workspace, info};
    X11KeyEventMonitors monitors;
    RecordingSettingsModel model{{.loop = loop,
                                  .nav = stage.nav,
                                  .perms = stage.perms,
                                  .settings = settings,
                                  .defaults = defaults,
                                  .authStore = auth,
                                  .authSession = stage.session,
                                  .workspace = workspace,
                                  .info = info,
                                  .relauncher = stage.relauncher,
                                  .hotkey = stage.hotkey,
                                  .keys = monitors,
                                  .inputs = stage.inputs,
                                  .levelTest = stage.levelTest}};
    HotkeySettingsModel& hotkey = *model.hotkey();
    PhysicalKeyboard keyboard;
    ViewHost host;
};

} // namespace

TEST_F(HotkeyCaptureTest, ModifierAlone_IsCaptured) {
    ASSERT_TRUE(hotkey.isCapturing());
    keyboard.tap(key::rightAlt);
    EXPECT_TRUE(captures("Right ⌥"));
    EXPECT_EQ(settings.hotkey(), QStringLiteral("custom"));
    EXPECT_TRUE(host.window().isActive());
}

TEST_F(HotkeyCaptureTest, LetterAloneAndThenWithItsModifier_IsCaptured) {
    keyboard.tap(letterP);
    ASSERT_TRUE(waitUntil([&] { return hotkey.hintWarns(); }));
    EXPECT_TRUE(hotkey.isCapturing());
    keyboard.press(key::leftSuper);
    keyboard.tap(letterP);
    keyboard.release(key::leftSuper);
    EXPECT_TRUE(captures("⌘ P"));
    EXPECT_FALSE(hotkey.isCapturing());
}

TEST_F(HotkeyCaptureTest, Escape_EndsTheCaptureAndReachesNothingElse) {
    keyboard.tap(key::escape);
    ASSERT_TRUE(waitUntil([&] { return !hotkey.isCapturing(); }));
    ASSERT_TRUE(waitUntil([&] {
        keyboard.tap(letterP); // which is the page's again, and would come after what came before
        return host.root()->property("letters").toInt() > 0;
    }));
    EXPECT_EQ(host.root()->property("escapes"), 0);
    EXPECT_EQ(settings.hotkey(), QStringLiteral("fn"));
}

TEST_F(HotkeyCaptureTest, AnotherWindowGetsTheFocus_EndsTheCaptureAndItGetsItsKeys) {
    ASSERT_TRUE(hotkey.isCapturing());
    KeyWindow other;
    ASSERT_TRUE(waitUntil([&] { return !hotkey.isCapturing(); }));
    EXPECT_TRUE(waitUntil([&] {
        keyboard.tap(letterP);
        return !other.takeKeys().empty();
    }));
    EXPECT_EQ(settings.hotkey(), QStringLiteral("fn"));
}
