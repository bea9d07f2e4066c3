#include "support/ui/view_host.h"
#include "support/wait.h"
#include "ui/menu_bar/menu_bar_popover_model.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

const QString history = QStringLiteral("История");
const QString quit = QStringLiteral("Выйти");
const QString record = QStringLiteral("Записать");

class MenuBarPopoverViewTest : public testing::Test {
protected:
    void show(const MenuBarPopoverModel::Snapshot& snapshot) {
        popover = std::make_unique<MenuBarPopoverModel>(snapshot);
        QObject::connect(popover.get(), &MenuBarPopoverModel::chosen,
                         [this](PopoverAction action) { chosen.push_back(action); });
        QObject::connect(popover.get(), &MenuBarPopoverModel::dismissed, [this] { ++dismissals; });
        host.show("MenuBar", "MenuBarPopoverView",
                  {{QStringLiteral("popover"), QVariant::fromValue(popover.get())}});
    }
    void showReady(const QString& label = QStringLiteral("Right ⌥"), const QString& note = {}) {
        show({label, note, true, true, true});
    }
    [[nodiscard]] QString focusedName() const { return accessibleName(host.focused()); }

    std::unique_ptr<MenuBarPopoverModel> popover;
    ViewHost host;
    std::vector<PopoverAction> chosen;
    int dismissals = 0;
};

} // namespace

TEST_F(MenuBarPopoverViewTest, EverythingWorks_RecordRowAndMenu) {
    showReady();
    EXPECT_THAT(host.texts(),
                ElementsAre(record, QStringLiteral("удерживайте, чтобы говорить"), QStringLiteral("Right ⌥"),
                            history, QStringLiteral("Созвоны"), QStringLiteral("Настройки"),
                            QStringLiteral("⌘,"), QStringLiteral("О программе"), quit));
}

TEST_F(MenuBarPopoverViewTest, ARightMissing_WarningRowAndMenu) {
    show({QStringLiteral("Fn"), QStringLiteral("Fn здесь — правый Ctrl"), true, true, false});
    EXPECT_THAT(host.texts(), ElementsAre(QStringLiteral("Глобальная запись выключена"),
                                          QStringLiteral("Нужен Accessibility (для вставки) · клик →"),
                                          history, QStringLiteral("Созвоны"), QStringLiteral("Настройки"),
                                          QStringLiteral("⌘,"), QStringLiteral("О программе"), quit));
}

TEST_F(MenuBarPopoverViewTest, FnWithAStandIn_SaysWhichKeyItIs) {
    showReady(QStringLiteral("Fn"), QStringLiteral("Fn здесь — правый Ctrl"));
    EXPECT_TRUE(host.texts().contains(QStringLiteral("Fn здесь — правый Ctrl")));
}

TEST_F(MenuBarPopoverViewTest, ClicksOnRows_ChooseTheirActions) {
    showReady();
    for (const char* row : {"Записать", "История", "Созвоны", "Настройки", "О программе", "Выйти"})
        host.click(QString::fromUtf8(row));
    EXPECT_THAT(chosen,
                ElementsAre(PopoverAction::TestRecord, PopoverAction::History, PopoverAction::Meetings,
                            PopoverAction::Settings, PopoverAction::About, PopoverAction::Quit));
}

TEST_F(MenuBarPopoverViewTest, ClickOnTheWarning_OpensThePermissions) {
    show({});
    host.click(QStringLiteral("Глобальная запись выключена"));
    EXPECT_THAT(chosen, ElementsAre(PopoverAction::OpenPermissions));
}

TEST_F(MenuBarPopoverViewTest, ClickAtARowsFarEnd_CountsToo) {
    showReady();
    QQuickItem* row = host.find(quit);
    EXPECT_EQ(row->width(), 308);
    QTest::mouseClick(&host.window(), Qt::LeftButton, {},
                      row->mapToScene(QPointF(row->width() - 3, 3)).toPoint());
    EXPECT_THAT(chosen, ElementsAre(PopoverAction::Quit));
}

TEST_F(MenuBarPopoverViewTest, FirstDown_GoesToTheFirstRow) {
    showReady();
    EXPECT_NE(accessibleRole(host.focused()), QAccessible::MenuItem);
    host.press(Qt::Key_Down);
    EXPECT_EQ(focusedName(), record);
}

TEST_F(MenuBarPopoverViewTest, FirstTab_GoesToTheFirstRow) {
    showReady();
    host.press(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), record);
}

TEST_F(MenuBarPopoverViewTest, Arrows_GoThroughTheRowsAndRound) {
    showReady();
    QStringList names;
    for (int i = 0; i < 7; ++i) {
        host.press(Qt::Key_Down);
        names.append(focusedName());
    }
    EXPECT_THAT(names, ElementsAre(record, history, QStringLiteral("Созвоны"), QStringLiteral("Настройки"),
                                   QStringLiteral("О программе"), quit, record));
    host.press(Qt::Key_Up);
    EXPECT_EQ(focusedName(), quit);
}

TEST_F(MenuBarPopoverViewTest, UpAtFirst_GoesToTheLastRow) {
    showReady();
    host.press(Qt::Key_Up);
    EXPECT_EQ(focusedName(), quit);
}

TEST_F(MenuBarPopoverViewTest, EnterOrSpace_ChoosesTheFocusedRow) {
    showReady();
    host.press(Qt::Key_Down);
    host.press(Qt::Key_Down);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        host.press(key);
    EXPECT_THAT(chosen, ElementsAre(PopoverAction::History, PopoverAction::History, PopoverAction::History));
}

TEST_F(MenuBarPopoverViewTest, Escape_DismissesWhateverHasTheFocus) {
    showReady();
    host.press(Qt::Key_Escape);
    host.press(Qt::Key_Down);
    host.press(Qt::Key_Escape);
    EXPECT_EQ(dismissals, 2);
    EXPECT_THAT(chosen, testing::IsEmpty());
}

TEST_F(MenuBarPopoverViewTest, PointerOnARow_LightsIt) {
    showReady();
    QQuickItem* row = host.find(history);
    const QPoint spot = row->mapToScene(QPointF(row->width() / 2, 4)).toPoint();
    const QColor before = host.grab().pixelColor(spot);
    host.hover(row);
    EXPECT_TRUE(waitUntil([&] { return host.grab().pixelColor(spot) != before; }));
}

TEST_F(MenuBarPopoverViewTest, AssistiveTechnology_FindsAMenuAndItsItems) {
    showReady(QStringLiteral("Fn"), QStringLiteral("Fn здесь — правый Ctrl"));
    EXPECT_EQ(accessibleRole(host.root()), QAccessible::PopupMenu);
    for (const QString& name : {record, history, quit})
        EXPECT_EQ(accessibleRole(host.find(name)), QAccessible::MenuItem) << name.toStdString();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(host.find(record))->text(QAccessible::Description),
              QStringLiteral("Fn: удерживайте, чтобы говорить. Fn здесь — правый Ctrl"));
}

TEST_F(MenuBarPopoverViewTest, LongLabel_LeavesRoomForTheWords) {
    showReady(QStringLiteral("⌃⌥⇧⌘ Scroll Lock и ещё что-то"));
    EXPECT_GT(host.find(record)->height(), 50);
    EXPECT_EQ(host.root()->width(), 320);
}
