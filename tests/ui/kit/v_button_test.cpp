#include "kit_fixture.h"
#include "support/wait.h"

using namespace velmora::test;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

class VButtonTest : public KitTest {};
class VIconBtnTest : public KitTest {};

const QString save = QStringLiteral("Сохранить");
const QString saved = QStringLiteral("Сохранено");

const QByteArray feedbackButton = "VButton { objectName: 'button'; title: 'Сохранить'; successTitle: "
                                  "'Сохранено'; showSuccessFeedback: true;"
                                  " onAction: page.count++ }";

} // namespace

TEST_F(VButtonTest, ClickSpaceAndEnter_Act) {
    showControls("VButton { title: 'Сохранить'; onAction: page.count++ }");
    host.click(save);
    EXPECT_EQ(count(), 1);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        host.press(key);
    EXPECT_EQ(count(), 4);
}

TEST_F(VButtonTest, ReadAloud_IsAButtonWithItsTitle) {
    showControls("VButton { title: 'Сохранить' }");
    EXPECT_EQ(accessibleRole(host.find(save)), QAccessible::Button);
}

TEST_F(VButtonTest, PressedByAssistiveTechnology_Acts) {
    showControls("VButton { title: 'Сохранить'; onAction: page.count++ }");
    pressAloud(host.find(save));
    EXPECT_EQ(count(), 1);
}

TEST_F(VButtonTest, Disabled_NeitherActsNorTakesTheFocus) {
    showControls("VButton { title: 'Сохранить'; enabled: false; onAction: page.count++ }\n"
                 "VButton { y: 60; title: 'Дальше' }");
    host.click(save);
    pressAloud(host.find(save));
    EXPECT_EQ(count(), 0);
    host.press(Qt::Key_Tab);
    EXPECT_EQ(accessibleName(host.focused()), QStringLiteral("Дальше"));
}

TEST_F(VButtonTest, FocusByTab_ShowsTheRingAndByPointerDoesNot) {
    showControls("VButton { title: 'Сохранить' } VButton { y: 60; title: 'Дальше' }");
    host.press(Qt::Key_Tab);
    EXPECT_TRUE(host.focused()->property("visualFocus").toBool());
    const QImage focused = host.grab();
    host.click(QStringLiteral("Дальше"));
    EXPECT_FALSE(host.focused()->property("visualFocus").toBool());
    EXPECT_NE(host.grab(), focused);
}

TEST_F(VButtonTest, SuccessFeedback_ShowsTheOtherTitleUntilItsTimeIsOver) {
    showControls(feedbackButton);
    QQuickItem* button = item("button");
    auto* timer = button->findChild<QObject*>(QStringLiteral("successTimer"));
    EXPECT_EQ(timer->property("interval").toInt(), 1200);
    host.click(save);
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(button->property("didSucceed").toBool());
    EXPECT_TRUE(timer->property("running").toBool());
    EXPECT_THAT(host.texts(), ElementsAre(saved));
    EXPECT_TRUE(host.has(saved));

    timer->setProperty("interval", 1);
    EXPECT_TRUE(waitUntil([&] { return !button->property("didSucceed").toBool(); }));
    EXPECT_THAT(host.texts(), ElementsAre(save));
}

TEST_F(VButtonTest, SuccessFeedback_KeepsTheWidth) {
    showControls(feedbackButton);
    QQuickItem* button = item("button");
    const qreal width = button->width();
    button->setProperty("didSucceed", true);
    EXPECT_EQ(button->width(), width);
    EXPECT_GT(width, 0);
}

TEST_F(VButtonTest, PressWithoutFeedback_KeepsItsTitle) {
    showControls("VButton { objectName: 'button'; title: 'Сохранить'; successTitle: 'Сохранено' }");
    host.click(save);
    EXPECT_FALSE(item("button")->property("didSucceed").toBool());
    EXPECT_THAT(host.texts(), ElementsAre(save));
}

TEST_F(VButtonTest, SmallSize_IsLower) {
    showControls("VButton { objectName: 'small'; title: 'А'; size: VButtonSize.Sm }\n"
                 "VButton { objectName: 'medium'; title: 'А' }");
    EXPECT_EQ(item("small")->height(), 28);
    EXPECT_EQ(item("medium")->height(), 34);
}

TEST_F(VButtonTest, Primary_IsFilledWithTheAccent) {
    showControls("VButton { title: 'Сохранить'; primary: true }");
    const auto red = [this] { return host.grab().pixelColor(3, 4).red(); };
    EXPECT_NEAR(red(), host.theme.accent().red(), 3);
    host.settings.setThemeColor(QStringLiteral("teal"));
    EXPECT_NEAR(red(), 0x80, 3);
}

TEST_F(VButtonTest, BrandButtons_HaveTheirTitleAndAct) {
    showControls(
        "AsanaBrandButton { title: 'Подключить Asana'; onAction: page.note += 'a' }\n"
        "GoogleDriveBrandButton { y: 60; title: 'Подключить Google Drive'; onAction: page.note += 'g' }");
    host.click(QStringLiteral("Подключить Asana"));
    host.click(QStringLiteral("Подключить Google Drive"));
    EXPECT_EQ(note(), QStringLiteral("ag"));
}

TEST_F(VIconBtnTest, Shown_IsSquareAndNamedByItsToolTip) {
    showControls(
        "VIconBtn { objectName: 'button'; icon: VIcon.xMark; tooltip: 'Закрыть'; onAction: page.count++ }");
    EXPECT_EQ(item("button")->width(), item("button")->height());
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("Закрыть"))), QAccessible::Button);
    host.click(QStringLiteral("Закрыть"));
    EXPECT_EQ(count(), 1);
}

TEST_F(VIconBtnTest, WithoutToolTip_IsNamedByItsLabel) {
    showControls("VIconBtn { icon: VIcon.trash; label: 'Удалить'; onAction: page.count++ }");
    host.hover(host.find(QStringLiteral("Удалить")));
    EXPECT_THAT(host.texts(), Not(Contains(QStringLiteral("Удалить"))));
    host.click(QStringLiteral("Удалить"));
    EXPECT_EQ(count(), 1);
}

TEST_F(VIconBtnTest, Danger_IsRed) {
    showControls("VIconBtn { icon: VIcon.video; danger: true; label: 'Удалить' }");
    EXPECT_EQ(host.grab().pixelColor(12, 14), host.theme.red());
}

TEST_F(VIconBtnTest, PointerRests_ShowsTheToolTipUntilItLeaves) {
    showControls("VIconBtn { icon: VIcon.xMark; x: 100; y: 100; tooltip: 'Закрыть'; tooltipDelay: 0 }");
    QQuickItem* button = host.find(QStringLiteral("Закрыть"));
    const auto tip = [button] { return button->property("shownTip").value<QObject*>(); };
    EXPECT_FALSE(tip());
    host.hover(button);
    ASSERT_TRUE(tip());
    EXPECT_TRUE(tip()->property("visible").toBool());
    EXPECT_EQ(tip()->property("text"), QStringLiteral("Закрыть"));
    EXPECT_EQ(tip()->property("y").toReal(), button->height() + 6);
    host.hover(host.root());
    EXPECT_FALSE(tip());
}

TEST_F(VIconBtnTest, NoRoomBelow_ToolTipLiesAbove) {
    showControls("VIconBtn { icon: VIcon.xMark; x: 100; y: 205; tooltip: 'Закрыть'; tooltipDelay: 0 }");
    QQuickItem* button = host.find(QStringLiteral("Закрыть"));
    host.hover(button);
    auto* tip = button->property("shownTip").value<QObject*>();
    ASSERT_TRUE(tip);
    EXPECT_LT(tip->property("y").toReal(), 0);
}
