#include "core/app_settings.h"
#include "core/hotkey_label.h"
#include "ui/menu_bar/menu_bar_popover_model.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velmora;

namespace {

MenuBarPopoverModel::Snapshot flags(bool hotkeyActive, bool inputMonitoring, bool accessibility) {
    return {.hotkeyActive = hotkeyActive,
            .inputMonitoringGranted = inputMonitoring,
            .accessibilityGranted = accessibility};
}

class HotkeyLabelTest : public testing::Test {
protected:
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
};

} // namespace

TEST(MenuBarPopoverModel, AllThreeFlags_TheRecordRow) {
    const MenuBarPopoverModel popover(flags(true, true, true));
    EXPECT_TRUE(popover.canRecord());
    EXPECT_EQ(popover.headAction(), PopoverAction::TestRecord);
    EXPECT_EQ(popover.recordHint(), QStringLiteral("удерживайте, чтобы говорить"));
}

TEST(MenuBarPopoverModel, HotkeyInactiveWithBothRights_AsksForARestart) {
    const MenuBarPopoverModel popover(flags(false, true, true));
    EXPECT_FALSE(popover.canRecord());
    EXPECT_EQ(popover.headAction(), PopoverAction::OpenPermissions);
    EXPECT_EQ(popover.warningHint(), QStringLiteral("Перезапусти приложение после выдачи прав."));
    EXPECT_EQ(popover.recordHint(), QStringLiteral("клик — тестовая запись 3с"));
}

TEST(MenuBarPopoverModel, ARightMissing_TheWarningNamesTheFirst) {
    const QString inputMonitoring = QStringLiteral("Нужен Input Monitoring · клик →");
    const QString accessibility = QStringLiteral("Нужен Accessibility (для вставки) · клик →");
    for (const bool active : {true, false}) {
        for (const bool other : {true, false}) {
            const MenuBarPopoverModel first(flags(active, false, other));
            EXPECT_FALSE(first.canRecord());
            EXPECT_EQ(first.warningHint(), inputMonitoring);
        }
        const MenuBarPopoverModel second(flags(active, true, false));
        EXPECT_FALSE(second.canRecord());
        EXPECT_EQ(second.warningHint(), accessibility);
    }
}

TEST(MenuBarPopoverModel, Rows_AreTheStandardMenu) {
    const QList<PopoverRow> expected{
        {VIcon::history, QStringLiteral("История"), {}, false, true, PopoverAction::History},
        {VIcon::micFill, QStringLiteral("Созвоны"), {}, false, false, PopoverAction::Meetings},
        {VIcon::gear, QStringLiteral("Настройки"), QStringLiteral("⌘,"), false, false,
         PopoverAction::Settings},
        {VIcon::info, QStringLiteral("О программе"), {}, false, false, PopoverAction::About},
        {{}, QStringLiteral("Выйти"), {}, true, true, PopoverAction::Quit},
    };
    EXPECT_EQ(MenuBarPopoverModel({}).rows(), expected);
}

TEST_F(HotkeyLabelTest, EachHotkey_HasItsLabel) {
    const std::vector<std::pair<const char*, QString>> table{
        {"fn", QStringLiteral("Fn")},
        {"ralt", QStringLiteral("Right ⌥")},
        {"rcmd", QStringLiteral("Right ⌘")},
        {"unheard-of", QStringLiteral("Fn")},
    };
    for (const auto& [hotkey, label] : table) {
        settings.setHotkey(QLatin1String(hotkey));
        EXPECT_EQ(hotkeyLabel(settings), label) << hotkey;
    }
}

TEST_F(HotkeyLabelTest, CustomHotkey_ShowsItsLabelOrAQuestionMark) {
    settings.setHotkey(QStringLiteral("custom"));
    EXPECT_EQ(hotkeyLabel(settings), QStringLiteral("?"));
    settings.setHotkeyCustomLabel(QStringLiteral("⌃Space"));
    EXPECT_EQ(hotkeyLabel(settings), QStringLiteral("⌃Space"));
}

TEST_F(HotkeyLabelTest, Fn_SaysWhichKeyPlaysIt) {
    EXPECT_EQ(fnStandInNote(settings), QStringLiteral("Fn здесь — правый Ctrl"));
    settings.setFnStandIn(QStringLiteral("scrolllock"));
    EXPECT_EQ(fnStandInNote(settings), QStringLiteral("Fn здесь — Scroll Lock"));
    settings.setFnStandIn(QStringLiteral("none"));
    EXPECT_TRUE(fnStandInNote(settings).isEmpty());
}

TEST_F(HotkeyLabelTest, AnotherHotkey_NeedsNoWordOnFn) {
    for (const char* hotkey : {"ralt", "rcmd", "custom"}) {
        settings.setHotkey(QLatin1String(hotkey));
        EXPECT_TRUE(fnStandInNote(settings).isEmpty()) << hotkey;
    }
}
