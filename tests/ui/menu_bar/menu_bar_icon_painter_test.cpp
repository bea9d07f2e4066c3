#include "ui/menu_bar/menu_bar_icon_painter.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

const QColor lime(0xA8, 0xCC, 0x5A);

QImage paint(MenuBarIconMode mode, double ratio = 1, const BrandBars& bars = restingBrandBars) {
    return MenuBarIconPainter(lime).paint(mode, bars, ratio);
}

// The outermost pixel above the mark, where nothing but its light falls.
QColor edge(const QImage& image) {
    return image.pixelColor(image.width() / 2, 0);
}

} // namespace

TEST(MenuBarIconPainter, EachRatio_HasItsPixels) {
    EXPECT_EQ(paint(MenuBarIconMode::Idle, 1).size(), QSize(22, 22));
    EXPECT_EQ(paint(MenuBarIconMode::Idle, 2).size(), QSize(44, 44));
    EXPECT_EQ(paint(MenuBarIconMode::Idle, 2).deviceIndependentSize(), QSizeF(22, 22));
}

TEST(MenuBarIconPainter, Idle_IsTheMarkInAClearSquare) {
    const QImage image = paint(MenuBarIconMode::Idle);
    EXPECT_EQ(edge(image).alpha(), 0);
    EXPECT_EQ(image.pixelColor(1, 11).alpha(), 0);
    EXPECT_EQ(image.pixelColor(4, 11).alpha(), 255); // the tile begins at 2
    EXPECT_LT(image.pixelColor(11, 11).lightness(), image.pixelColor(4, 11).lightness()); // the bars
}

TEST(MenuBarIconPainter, Recording_GlowsRedToTheEdge) {
    const QColor glow = edge(paint(MenuBarIconMode::Recording));
    EXPECT_GT(glow.alpha(), 0);
    EXPECT_GT(glow.red(), 2 * glow.green());
}

TEST(MenuBarIconPainter, Processing_GlowsInTheAccent) {
    const QColor glow = edge(paint(MenuBarIconMode::Processing));
    EXPECT_GT(glow.alpha(), 0);
    EXPECT_GT(glow.green(), glow.red());
}

TEST(MenuBarIconPainter, Error_HasARedBadgeWithAWhiteSign) {
    const QImage image = paint(MenuBarIconMode::Error);
    EXPECT_EQ(image.pixelColor(8, 11), QColor(0xFF, 0x3B, 0x30));
    EXPECT_EQ(image.pixelColor(11, 9), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(4, 11), paint(MenuBarIconMode::Idle).pixelColor(4, 11)); // no bar sticks out
}

TEST(MenuBarIconPainter, SmallPicture_HasBarsOfWholePixels) {
    const QImage image = paint(MenuBarIconMode::Idle);
    for (int x = 5; x <= 17; ++x)
        EXPECT_EQ(image.pixelColor(x, 11).lightness() < 40, x % 2 == 1) << x;
}

TEST(MenuBarIconPainter, TallerBars_DarkenMoreOfTheMark) {
    const QImage low = paint(MenuBarIconMode::Recording, 2, {4, 4, 4, 4, 4, 4, 4});
    const QImage high = paint(MenuBarIconMode::Recording, 2, {42, 42, 42, 42, 42, 42, 42});
    EXPECT_GT(low.pixelColor(22, 12).lightness(), high.pixelColor(22, 12).lightness());
}
