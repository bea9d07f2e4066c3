#include "kit_fixture.h"
#include "ui/kit/v_choice.h"
#include "ui/kit/v_pill_nav_item.h"

#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

class VSegmentedTest : public KitTest {
protected:
    void showDays() {
        showControls(
            "property string filter: '7 дней'\n"
            "VSegmented { objectName: 'days'; label: 'Период'; options: ['Сегодня', '7 дней', 'Всё'];"
            " selected: page.filter; onPicked: (option) => { page.count++; page.filter = option } }");
    }
    [[nodiscard]] QString filter() const { return host.root()->property("filter").toString(); }
    [[nodiscard]] QString selected() const { return item("days")->property("selected").toString(); }
};
class VPillNavTest : public KitTest {};

const QString today = QStringLiteral("Сегодня");
const QString week = QStringLiteral("7 дней");
const QString all = QStringLiteral("Всё");

} // namespace

TEST(VChoice, Options_PrintAsTheyAreOrByTheirTitle) {
    VChoice choice;
    choice.setOptions({1, QStringLiteral("два"),
                       QVariantMap{{QStringLiteral("value"), QStringLiteral("LOCAL")},
                                   {QStringLiteral("title"), QStringLiteral("Локально")}}});
    EXPECT_THAT(choice.titles(),
                ElementsAre(QStringLiteral("1"), QStringLiteral("два"), QStringLiteral("Локально")));
    choice.setSelected(QStringLiteral("LOCAL"));
    EXPECT_EQ(choice.index(), 2);
    choice.setSelected(QStringLiteral("DRIVE"));
    EXPECT_EQ(choice.index(), -1);
}

TEST(VChoice, Picked_IsSaidOnceAndOnlyForAnotherOption) {
    VChoice choice;
    const QSignalSpy picked(&choice, &VChoice::picked);
    choice.setOptions({1, 2, 3});
    choice.setSelected(2);
    choice.pick(1);
    choice.pick(-1);
    choice.pick(3);
    EXPECT_TRUE(picked.isEmpty());
    choice.pick(2);
    ASSERT_EQ(picked.size(), 1);
    EXPECT_EQ(picked.first().first(), QVariant(3));
    EXPECT_EQ(choice.selected(), QVariant(3));
}

TEST(VChoice, Confirmed_IsSaidOfTheChosenOptionToo) {
    VChoice choice;
    const QSignalSpy confirmed(&choice, &VChoice::confirmed);
    choice.setOptions({1, 2});
    choice.setSelected(1);
    choice.pick(0);
    choice.pick(1);
    choice.pick(2);
    choice.step(1); // nowhere to go
    ASSERT_EQ(confirmed.size(), 2);
    EXPECT_EQ(confirmed[0].first(), QVariant(1));
    EXPECT_EQ(confirmed[1].first(), QVariant(2));
}

TEST(VChoice, Step_EndsAtTheFirstAndTheLast) {
    VChoice choice;
    choice.step(1); // nothing to step to
    EXPECT_EQ(choice.index(), -1);
    choice.setOptions({1, 2});
    choice.step(1);
    EXPECT_EQ(choice.index(), 0);
    choice.step(-1);
    EXPECT_EQ(choice.index(), 0);
    choice.step(1);
    choice.step(1);
    EXPECT_EQ(choice.index(), 1);
}

TEST(VChoice, OptionsArriveAfterTheValue_FindIt) {
    VChoice choice;
    choice.setSelected(QStringLiteral("б"));
    EXPECT_EQ(choice.index(), -1);
    choice.setOptions({QStringLiteral("а"), QStringLiteral("б")});
    EXPECT_EQ(choice.index(), 1);
}

TEST_F(VSegmentedTest, Click_PicksAndKeepsTheBinding) {
    showDays();
    host.click(all);
    EXPECT_EQ(filter(), all);
    EXPECT_EQ(count(), 1);
    host.root()->setProperty("filter", today);
    EXPECT_EQ(selected(), today);
}

TEST_F(VSegmentedTest, Arrows_MoveTheChoiceAndTheFocus) {
    showDays();
    host.press(Qt::Key_Tab);
    EXPECT_EQ(accessibleName(host.focused()), week);
    host.press(Qt::Key_Right);
    EXPECT_EQ(filter(), all);
    EXPECT_EQ(accessibleName(host.focused()), all);
    host.press(Qt::Key_Right);
    EXPECT_EQ(filter(), all);
    host.press(Qt::Key_Left);
    host.press(Qt::Key_Up);
    EXPECT_EQ(filter(), today);
    EXPECT_TRUE(host.focused()->property("visualFocus").toBool());
    EXPECT_EQ(count(), 3);
}

TEST_F(VSegmentedTest, Tab_StopsOnceForAllSegments) {
    showControls("VSegmented { options: ['Сегодня', '7 дней', 'Всё']; selected: 'Всё' }\n"
                 "VButton { y: 60; title: 'Дальше' }");
    host.press(Qt::Key_Tab);
    EXPECT_EQ(accessibleName(host.focused()), all);
    host.press(Qt::Key_Tab);
    EXPECT_EQ(accessibleName(host.focused()), QStringLiteral("Дальше"));
}

TEST_F(VSegmentedTest, NothingChosen_TabStopsAtTheFirst) {
    showControls("VSegmented { options: ['Сегодня', 'Всё'] }");
    host.press(Qt::Key_Tab);
    EXPECT_EQ(accessibleName(host.focused()), today);
}

TEST_F(VSegmentedTest, ReadAloud_IsAGroupOfRadioButtons) {
    showDays();
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("Период"))), QAccessible::Grouping);
    EXPECT_EQ(accessibleRole(host.find(week)), QAccessible::RadioButton);
    EXPECT_TRUE(stateOf(host.find(week)).checked);
    EXPECT_FALSE(stateOf(host.find(all)).checked);
}

TEST_F(VSegmentedTest, PressedByAssistiveTechnology_Picks) {
    showDays();
    pressAloud(host.find(all));
    EXPECT_EQ(filter(), all);
    EXPECT_TRUE(stateOf(host.find(all)).checked);
}

TEST_F(VSegmentedTest, Disabled_StaysAsItIs) {
    showControls("VSegmented { objectName: 'days'; enabled: false; options: [1, 2]; selected: 1 }");
    host.click(QStringLiteral("2"));
    EXPECT_EQ(item("days")->property("selected"), QVariant(1));
}

TEST_F(VPillNavTest, ItemsOfTheProgram_AreTabs) {
    showControls(
        "property var items: []; property string tab: 'general'\n"
        "VPillNav { width: 400; items: page.items; selected: page.tab; onPicked: (id) => page.tab = id }");
    host.root()->setProperty(
        "items",
        QVariantList{
            QVariant::fromValue(VPillNavItem{QStringLiteral("general"), QStringLiteral("Общие")}),
            QVariant::fromValue(VPillNavItem{QStringLiteral("about"), QStringLiteral("О программе")})});
    QQuickItem* about = host.find(QStringLiteral("О программе"));
    EXPECT_EQ(accessibleRole(about), QAccessible::RadioButton);
    EXPECT_TRUE(stateOf(host.find(QStringLiteral("Общие"))).checked);
    host.click(about);
    EXPECT_EQ(host.root()->property("tab"), QStringLiteral("about"));
    EXPECT_TRUE(stateOf(about).checked);
    EXPECT_FALSE(stateOf(host.find(QStringLiteral("Общие"))).checked);
}

TEST_F(VPillNavTest, ItemsOfAView_AreTabsToo) {
    showControls(
        "VPillNav { objectName: 'nav'; width: 400; selected: 'a'; items: ["
        "{ id: 'a', label: 'Общие', icon: VIcon.gear }, { id: 'b', label: 'Запись', tint: 'red' }] }");
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Right);
    EXPECT_EQ(item("nav")->property("selected"), QStringLiteral("b"));
}

TEST_F(VPillNavTest, TooNarrow_WrapsIntoLines) {
    showControls("VPillNav { objectName: 'nav'; width: 120; items: ["
                 "{ id: 'a', label: 'Интеграции' }, { id: 'b', label: 'Разрешения' }] }");
    EXPECT_EQ(host.find(QStringLiteral("Разрешения"))->x(), 0);
    EXPECT_EQ(item("nav")->height(), 64);
}
