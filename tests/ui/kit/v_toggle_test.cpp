#include "kit_fixture.h"
#include "support/wait.h"

using namespace velmora::test;

namespace {

class VToggleTest : public KitTest {
protected:
    void showToggle() {
        showControls(
            "property bool shown: false\n"
            "VToggle { label: 'Показывать'; on: page.shown; onToggled: { page.count++; page.shown = on } }");
    }
    [[nodiscard]] bool isShown() const { return host.root()->property("shown").toBool(); }
    [[nodiscard]] QQuickItem* toggle() const { return host.find(QStringLiteral("Показывать")); }
};

} // namespace

TEST_F(VToggleTest, Click_FlipsAndKeepsTheBinding) {
    showToggle();
    EXPECT_EQ(toggle()->size(), QSizeF(38, 22));
    host.click(toggle());
    EXPECT_TRUE(isShown());
    host.click(toggle());
    EXPECT_FALSE(isShown());
    EXPECT_EQ(count(), 2);
    host.root()->setProperty("shown", true);
    EXPECT_TRUE(toggle()->property("on").toBool());
}

TEST_F(VToggleTest, SpaceAndEnter_Flip) {
    showToggle();
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Space);
    EXPECT_TRUE(isShown());
    host.press(Qt::Key_Return);
    EXPECT_FALSE(isShown());
}

TEST_F(VToggleTest, ReadAloud_IsChecked) {
    showToggle();
    EXPECT_EQ(accessibleRole(toggle()), QAccessible::CheckBox);
    EXPECT_FALSE(stateOf(toggle()).checked);
    host.click(toggle());
    EXPECT_TRUE(stateOf(toggle()).checked);
}

TEST_F(VToggleTest, PressedByAssistiveTechnology_Flips) {
    showToggle();
    pressAloud(toggle());
    EXPECT_TRUE(isShown());
    EXPECT_EQ(count(), 1);
}

TEST_F(VToggleTest, Flip_TakesTheKnobOverInALittleWhile) {
    showToggle();
    EXPECT_EQ(toggle()->property("flipDuration").toInt(), 180);
    auto* knob = toggle()->findChild<QQuickItem*>(QStringLiteral("knob"));
    EXPECT_EQ(knob->x(), 2);
    toggle()->setProperty("on", true);
    EXPECT_EQ(knob->x(), 2);
    EXPECT_TRUE(waitUntil([knob] { return knob->x() == 18; }));
    EXPECT_EQ(host.grab().pixelColor(6, 11), host.theme.accent());
}

TEST_F(VToggleTest, Disabled_StaysAsItIs) {
    showControls("VToggle { label: 'Показывать'; on: true; enabled: false }");
    host.click(toggle());
    pressAloud(toggle());
    EXPECT_TRUE(toggle()->property("on").toBool());
}
