#include "core/app_settings.h"
#include "core/hotkey_label.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velmora;

namespace {

class HotkeyLabel : public testing::Test {
protected:
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
};

} // namespace

TEST_F(HotkeyLabel, EachHotkey_HasItsLabel) {
    struct Case {
        const char* hotkey;
        const char* customLabel;
        const char* label;
    };
    for (const Case& c : {
             Case{"fn", "", "Fn"},
             Case{"ralt", "", "Right ⌥"},
             Case{"rcmd", "", "Right ⌘"},
             Case{"custom", "⌃⌥D", "⌃⌥D"},
             Case{"custom", "", "?"},
             Case{"ralt", "⌃⌥D", "Right ⌥"},
             Case{"something", "⌃⌥D", "Fn"},
             Case{"", "", "Fn"},
         }) {
        settings.setHotkey(QString::fromUtf8(c.hotkey));
        settings.setHotkeyCustomLabel(QString::fromUtf8(c.customLabel));
        EXPECT_EQ(hotkeyLabel(settings).toStdString(), c.label) << c.hotkey;
    }
}

TEST_F(HotkeyLabel, FnPlayedByAnotherKey_IsSaid) {
    EXPECT_EQ(fnStandInNote(settings), QStringLiteral("Fn здесь — правый Ctrl"));
    settings.setFnStandIn(QStringLiteral("scrolllock"));
    EXPECT_EQ(fnStandInNote(settings), QStringLiteral("Fn здесь — Scroll Lock"));
    settings.setFnStandIn(QStringLiteral("none"));
    EXPECT_EQ(fnStandInNote(settings), QString());
}

TEST_F(HotkeyLabel, OtherHotkeyThanFn_HasNoStandIn) {
    for (const char* hotkey : {"ralt", "rcmd", "custom"}) {
        settings.setHotkey(QString::fromUtf8(hotkey));
        EXPECT_EQ(fnStandInNote(settings), QString()) << hotkey;
    }
}

TEST_F(HotkeyLabel, EachKeyThatPlaysFn_HasItsName) {
    QStringList names;
    for (const auto& [key, name] : fnStandInNames)
        names.append(fnStandInKeyName(key));
    EXPECT_EQ(names,
              (QStringList{QStringLiteral("нет"), QStringLiteral("правый Ctrl"), QStringLiteral("правый Alt"),
                           QStringLiteral("правый Super"), QStringLiteral("Menu"),
                           QStringLiteral("Scroll Lock"), QStringLiteral("Pause")}));
}

TEST_F(HotkeyLabel, CapturedFn_IsFnAsWell) {
    settings.setHotkey(QStringLiteral("custom"));
    settings.setHotkeyCustomLabel(QStringLiteral("Fn"));
    EXPECT_TRUE(hotkeyIsFn(settings));
    settings.setHotkeyCustomLabel(QStringLiteral("F5"));
    EXPECT_FALSE(hotkeyIsFn(settings));
}
