#include "kit_fixture.h"
#include "support/wait.h"

#include <QTest>

using namespace velmora;
using namespace velmora::test;

namespace {

class VMenuTest : public KitTest {
protected:
    void showFruit(const QByteArray& more = {}) {
        showControls("property string fruit: 'груша'; property int escapes: 0\n"
                     "Shortcut { sequence: 'Escape'; onActivated: page.escapes++ }\n"
                     "VMenu { objectName: 'menu'; label: 'Фрукт'; options: ['яблоко', 'груша', 'слива'];"
                     " selected: page.fruit; onPicked: (option) => { page.count++; page.fruit = option }\n" +
                     more + "}");
    }
    void focusMenu() { item("menu")->forceActiveFocus(Qt::TabFocusReason); }
    [[nodiscard]] QString fruit() const { return host.root()->property("fruit").toString(); }
    [[nodiscard]] int escapes() const { return host.root()->property("escapes").toInt(); }
    [[nodiscard]] QString shown() const { return item("menu")->property("displayText").toString(); }
    [[nodiscard]] QObject* popup() const { return item("menu")->property("popup").value<QObject*>(); }
    [[nodiscard]] bool isOpen() const { return popup()->property("visible").toBool(); }
    /// What lies on the window's overlay: the list, while it is open.
    [[nodiscard]] QQuickItem* list() const { return popup()->property("contentItem").value<QQuickItem*>(); }
    [[nodiscard]] QQuickItem* entry(int index) const {
        [[maybe_unused]] const QImage frame = host.grab(); // by which the list is laid out
        QQuickItem* found = nullptr;
        QMetaObject::invokeMethod(list(), "itemAtIndex", Q_RETURN_ARG(QQuickItem*, found), Q_ARG(int, index));
        return found;
    }
    [[nodiscard]] QRectF panel() const {
        QQuickItem* frame = list()->parentItem();
        return frame->mapRectToScene(frame->boundingRect());
    }
};

} // namespace

TEST_F(VMenuTest, Click_OpensTheListAndPicksFromIt) {
    showFruit();
    host.click(item("menu"));
    ASSERT_TRUE(isOpen());
    host.click(entry(2));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(fruit(), QStringLiteral("слива"));
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(shown(), QStringLiteral("слива"));
}

TEST_F(VMenuTest, PickingTheChosenOne_SaysNothing) {
    showFruit();
    host.click(item("menu"));
    host.click(entry(1));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(count(), 0);
}

TEST_F(VMenuTest, PressBeside_ClosesTheListAndChangesNothing) {
    showFruit();
    host.click(item("menu"));
    QTest::mouseClick(&host.window(), Qt::LeftButton, {}, QPoint(460, 230));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(count(), 0);
}

TEST_F(VMenuTest, ChangedElsewhere_ShowsIt) {
    showFruit();
    host.click(item("menu"));
    host.click(entry(2));
    host.root()->setProperty("fruit", QStringLiteral("яблоко"));
    EXPECT_EQ(shown(), QStringLiteral("яблоко"));
    EXPECT_EQ(count(), 1);
}

TEST_F(VMenuTest, OtherOptions_KeepTheChosenOne) {
    showFruit();
    item("menu")->setProperty("options", QStringList{QStringLiteral("дыня"), QStringLiteral("груша")});
    EXPECT_EQ(shown(), QStringLiteral("груша"));
    item("menu")->setProperty("options", QStringList{QStringLiteral("дыня"), QStringLiteral("лимон")});
    EXPECT_EQ(shown(), QString());
    EXPECT_EQ(count(), 0);
}

TEST_F(VMenuTest, ClosedList_ArrowsHomeAndEndPick) {
    showFruit();
    focusMenu();
    const std::pair<Qt::Key, const char*> steps[] = {
        {Qt::Key_Down, "слива"},  {Qt::Key_Down, "слива"}, {Qt::Key_Up, "груша"},
        {Qt::Key_Home, "яблоко"}, {Qt::Key_End, "слива"},
    };
    for (const auto& [key, expected] : steps) {
        host.press(key);
        EXPECT_EQ(fruit().toStdString(), expected);
    }
    EXPECT_FALSE(isOpen());
}

TEST_F(VMenuTest, SpaceAndEnter_OpenAndTakeWhatTheArrowsReached) {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        showFruit();
        focusMenu();
        host.press(key);
        ASSERT_TRUE(isOpen()) << key;
        host.press(Qt::Key_Up);
        EXPECT_EQ(count(), 0) << key;
        host.press(key);
        EXPECT_FALSE(isOpen()) << key;
        EXPECT_EQ(fruit(), QStringLiteral("яблоко")) << key;
        EXPECT_EQ(count(), 1) << key;
    }
}

TEST_F(VMenuTest, OpenList_HomeAndEndGoToItsEnds) {
    showFruit();
    focusMenu();
    host.press(Qt::Key_Space);
    host.press(Qt::Key_End);
    EXPECT_EQ(item("menu")->property("highlightedIndex"), 2);
    host.press(Qt::Key_Home);
    EXPECT_EQ(item("menu")->property("highlightedIndex"), 0);
    EXPECT_EQ(count(), 0);
}

TEST_F(VMenuTest, FirstLetter_FindsTheOption) {
    showFruit();
    focusMenu();
    host.type(QStringLiteral("с"));
    EXPECT_EQ(fruit(), QStringLiteral("слива"));
}

TEST_F(VMenuTest, Escape_ClosesTheListAndNothingElse) {
    showFruit();
    focusMenu();
    host.press(Qt::Key_Space);
    host.press(Qt::Key_Up);
    host.press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(escapes(), 0);
    EXPECT_EQ(count(), 0);
    host.press(Qt::Key_Escape);
    EXPECT_EQ(escapes(), 1);
}

TEST_F(VMenuTest, EscapeAfterAClick_ClosesTheListAndNothingElse) {
    showFruit();
    host.click(item("menu"));
    host.press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(escapes(), 0);
}

TEST_F(VMenuTest, List_StaysInsideTheWindow) {
    for (const char* place : {"", "anchors.bottom: parent.bottom;", "anchors.right: parent.right; y: 100;"}) {
        showFruit(QByteArray("Component.onCompleted: { let many = []; for (let i = 0; i < 40; ++i)"
                             " many.push('Микрофон с длинным именем, номер ' + i); options = many }\n") +
                  place);
        host.click(item("menu"));
        ASSERT_TRUE(waitUntil([&] { return panel().height() > 100; })) << place;
        EXPECT_TRUE(QRectF(0, 0, 480, 240).contains(panel())) << place;
    }
}

TEST_F(VMenuTest, NoRoomBelow_TheListOpensAbove) {
    showFruit("anchors.bottom: parent.bottom; anchors.bottomMargin: 10");
    host.click(item("menu"));
    EXPECT_LT(panel().bottom(), item("menu")->y());
    EXPECT_GT(panel().top(), 0);
}

TEST_F(VMenuTest, LongName_IsElidedInside) {
    showControls("VMenu { objectName: 'menu'; width: 120; selected: options[0];"
                 " options: ['Микрофон с именем, которое длиннее всякой меры'] }");
    auto* words = item("menu")->property("contentItem").value<QQuickItem*>();
    EXPECT_TRUE(words->property("truncated").toBool());
    EXPECT_LE(words->width(), 120 - 12 - 30);
}

TEST_F(VMenuTest, ReadAloud_IsAComboBoxWithItsNameAndValue) {
    showFruit();
    EXPECT_EQ(accessibleRole(item("menu")), QAccessible::ComboBox);
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(item("menu"));
    EXPECT_EQ(spoken->text(QAccessible::Name), QStringLiteral("Фрукт"));
    EXPECT_EQ(spoken->text(QAccessible::Description), QStringLiteral("груша"));
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Down);
    EXPECT_EQ(spoken->text(QAccessible::Description), QStringLiteral("слива"));
}

TEST_F(VMenuTest, PressedByAssistiveTechnology_OpensAndPicks) {
    showFruit();
    pressAloud(item("menu"));
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(accessibleName(entry(0)), QStringLiteral("яблоко"));
    pressAloud(entry(0));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(fruit(), QStringLiteral("яблоко"));
}

TEST_F(VMenuTest, KeyboardFocus_IsSeen) {
    showFruit();
    const QImage before = host.grab();
    host.press(Qt::Key_Tab);
    EXPECT_EQ(host.focused(), item("menu"));
    EXPECT_NE(host.grab(), before);
}

TEST_F(VMenuTest, Disabled_StaysAsItIs) {
    showFruit("enabled: false");
    host.click(item("menu"));
    EXPECT_FALSE(isOpen());
}
