#include "kit_fixture.h"

using namespace velmora::test;

namespace {

class VCardTest : public KitTest {};
class VRowTest : public KitTest {};
class VChipTest : public KitTest {};
class VKeyCapTest : public KitTest {};
class VTrafficLightsTest : public KitTest {};
class VHeadingTest : public KitTest {};
class VScrollBarTest : public KitTest {};
class VisualEffectBlurTest : public KitTest {};

} // namespace

TEST_F(VCardTest, Content_LiesInsideThePadding) {
    showControls(
        "VCard { objectName: 'card'; width: 300; padding: 20; verticalPadding: 8; spacing: 4\n"
        "Item { objectName: 'first'; width: parent.width; height: 30 } Item { width: 1; height: 10 } }");
    EXPECT_EQ(item("card")->height(), 30 + 4 + 10 + 2 * 8);
    EXPECT_EQ(item("first")->width(), 260);
    EXPECT_EQ(item("first")->mapToItem(item("card"), QPointF()), QPointF(20, 8));
}

TEST_F(VRowTest, Control_StandsRightAndBearsTheTitle) {
    showControls("VRow { title: 'Звук'; hint: 'Когда текст вставлен'; VToggle {} }");
    QQuickItem* toggle = host.find(QStringLiteral("Звук"));
    EXPECT_EQ(accessibleRole(toggle), QAccessible::CheckBox);
    EXPECT_EQ(toggle->mapToScene(QPointF(toggle->width(), 0)).x(), 480);
    EXPECT_THAT(host.texts(),
                testing::ElementsAre(QStringLiteral("Звук"), QStringLiteral("Когда текст вставлен")));
}

TEST_F(VRowTest, ControlWithALabel_KeepsIt) {
    showControls("VRow { title: 'Звук'; VToggle { label: 'Громко' } }");
    EXPECT_TRUE(host.has(QStringLiteral("Громко")));
}

TEST_F(VRowTest, LongHint_WrapsBesideTheControlAndTheRowGrows) {
    showControls(
        "VRow { objectName: 'short'; title: 'Звук'; hint: 'Да' }\n"
        "VRow { objectName: 'long'; y: 60; width: 300; title: 'Звук'; hint: 'Очень длинная подсказка, "
        "которая рассказывает обо всём сразу и потому не помещается'; VToggle {} }");
    EXPECT_GT(item("long")->height(), item("short")->height());
    EXPECT_GE(item("short")->height(), 44);
}

TEST_F(VChipTest, Ok_IsGreenOrRedAndTintIsItself) {
    showControls(
        "VChip { objectName: 'none'; label: 'а' } VChip { objectName: 'yes'; label: 'а'; ok: true }\n"
        "VChip { objectName: 'no'; label: 'а'; ok: false }\n"
        "VChip { objectName: 'tint'; label: 'а'; tint: VTheme.amber }");
    const auto ink = [this](const char* name) { return item(name)->property("ink").value<QColor>(); };
    EXPECT_EQ(ink("none"), host.theme.textMuted());
    EXPECT_EQ(ink("yes"), host.theme.green());
    EXPECT_EQ(ink("no"), host.theme.red());
    EXPECT_EQ(ink("tint"), host.theme.amber());
}

TEST_F(VKeyCapTest, Text_WidensTheKeyAndIsReadAloud) {
    showControls(
        "VKeyCap { objectName: 'fn'; text: 'F' } VKeyCap { objectName: 'long'; text: 'Правый Ctrl' }");
    EXPECT_EQ(item("fn")->width(), item("fn")->height());
    EXPECT_GT(item("long")->width(), 70);
    EXPECT_TRUE(host.has(QStringLiteral("Правый Ctrl")));
}

TEST_F(VKeyCapTest, Gradient_LightsItInTheAccent) {
    showControls("VKeyCap { objectName: 'key'; fontSize: 20; text: 'Fn' }");
    EXPECT_NE(host.grab().pixelColor(6, 4), host.theme.accent());
    item("key")->setProperty("gradient", true);
    const QColor lit = host.grab().pixelColor(6, 4);
    EXPECT_NEAR(lit.green(), host.theme.accent().green(), 12);
    EXPECT_NEAR(lit.blue(), host.theme.accent().blue(), 12);
}

TEST_F(VTrafficLightsTest, EachButton_AsksForItsOwn) {
    showControls("VTrafficLights { onCloseRequested: page.note += 'c'; onMinimizeRequested: page.note += 'm';"
                 " onZoomRequested: page.note += 'z' }");
    for (const char* name : {"Закрыть", "Свернуть", "Развернуть"})
        host.click(QString::fromUtf8(name));
    EXPECT_EQ(note(), QStringLiteral("cmz"));
}

TEST_F(VHeadingTest, ReadAloud_IsAHeading) {
    showControls("VH1 { text: 'Созвоны' }");
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("Созвоны"))), QAccessible::Heading);
}

TEST_F(VHeadingTest, Hairline_IsHalfAPixelThickEitherWay) {
    showControls("VHairline { objectName: 'h'; width: 100 } VHairline { objectName: 'v'; vertical: true; "
                 "height: 100 }");
    EXPECT_EQ(item("h")->height(), 0.5);
    EXPECT_EQ(item("v")->width(), 0.5);
}

TEST_F(VScrollBarTest, MoreThanFits_ShowsTheHandleWhileItMoves) {
    showControls("VScrollBar { objectName: 'bar'; x: 300; height: 100; size: 1; active: true }");
    EXPECT_FALSE(item("bar")->property("shown").toBool());
    item("bar")->setProperty("size", 0.4);
    EXPECT_TRUE(item("bar")->property("shown").toBool());
    item("bar")->setProperty("active", false);
    EXPECT_FALSE(item("bar")->property("shown").toBool());
}

TEST_F(VisualEffectBlurTest, EitherScheme_IsOpaque) {
    showControls("VisualEffectBlur { objectName: 'dark'; dark: true } VisualEffectBlur { objectName: "
                 "'light'; dark: false }");
    for (const char* name : {"dark", "light"})
        EXPECT_EQ(item(name)->property("color").value<QColor>().alpha(), 255) << name;
}
