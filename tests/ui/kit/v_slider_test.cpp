#include "kit_fixture.h"

using namespace velmora::test;

namespace {

class VSliderTest : public KitTest {
protected:
    [[nodiscard]] QQuickItem* slider() const { return host.find(QStringLiteral("Длительность")); }
    [[nodiscard]] double value() const { return slider()->property("value").toDouble(); }
};

} // namespace

TEST_F(VSliderTest, Arrows_MoveByItsStep) {
    showControls("VSlider { label: 'Длительность'; to: 10; stepSize: 2; value: 4; onMoved: page.count++ }");
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Right);
    EXPECT_EQ(value(), 6);
    host.press(Qt::Key_Left);
    host.press(Qt::Key_Left);
    EXPECT_EQ(value(), 2);
    EXPECT_EQ(count(), 3);
}

TEST_F(VSliderTest, PressInTheMiddle_IsTheMiddleValue) {
    showControls("VSlider { label: 'Длительность' }");
    host.click(slider());
    EXPECT_NEAR(value(), 0.5, 0.01);
}

TEST_F(VSliderTest, ReadAloud_IsASliderWithItsNameAndRange) {
    showControls("VSlider { label: 'Длительность'; from: 2; to: 10; value: 4 }");
    EXPECT_EQ(accessibleRole(slider()), QAccessible::Slider);
    QAccessibleValueInterface* range = QAccessible::queryAccessibleInterface(slider())->valueInterface();
    ASSERT_TRUE(range);
    EXPECT_EQ(range->minimumValue().toDouble(), 2);
    EXPECT_EQ(range->currentValue().toDouble(), 4);
    EXPECT_EQ(range->maximumValue().toDouble(), 10);
}

TEST_F(VSliderTest, SteppedByAssistiveTechnology_Moves) {
    showControls("VSlider { label: 'Длительность'; to: 10; stepSize: 2; value: 4; onMoved: page.count++ }");
    QAccessibleActionInterface* actions = QAccessible::queryAccessibleInterface(slider())->actionInterface();
    ASSERT_TRUE(actions);
    actions->doAction(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(value(), 6);
    actions->doAction(QAccessibleActionInterface::decreaseAction());
    EXPECT_EQ(value(), 4);
    EXPECT_EQ(count(), 2);
}

TEST_F(VSliderTest, Value_FillsTheTrackUpToIt) {
    showControls("VSlider { label: 'Длительность'; width: 200; value: 0.5 }");
    const QImage picture = host.grab();
    EXPECT_EQ(picture.pixelColor(50, 11), host.theme.accent());
    EXPECT_NE(picture.pixelColor(150, 11), host.theme.accent());
}

TEST_F(VSliderTest, Disabled_StaysAsItIs) {
    showControls("VSlider { label: 'Длительность'; enabled: false }");
    host.click(slider());
    EXPECT_EQ(value(), 0);
}
