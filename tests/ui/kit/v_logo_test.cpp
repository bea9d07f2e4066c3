#include "kit_fixture.h"
#include "ui/kit/brand_bars.h"
#include "ui/kit/brand_mark.h"

#include <QPainter>

using namespace velmora;
using namespace velmora::test;

namespace {

class VLogoTest : public KitTest {};

const QColor accent(0xA8, 0xCC, 0x5A);

// At 144 pixels a unit of the grid is two, so the bars lie on whole pixels.
constexpr int side = 144;

QImage mark(std::span<const double> bars, std::optional<double> radius = {}) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintBrandMark(painter, image.rect(), bars, accent, radius);
    return image;
}

bool isDark(const QImage& image, int x, int y) {
    return image.pixelColor(x, y).lightness() < 60;
}

// How many dark pixels lie in that column.
int barHeight(const QImage& image, int x) {
    int height = 0;
    for (int y = 0; y < side; ++y)
        height += image.pixelColor(x, y).alpha() == 255 && isDark(image, x, y) ? 1 : 0;
    return height;
}

} // namespace

TEST(BrandMark, AtRest_HasSevenBarsOfTheirHeights) {
    const QImage image = mark(restingBrandBars);
    const int left = side / 2 - 79 / 2 - 1; // seven bars of 7 pixels, six gaps of 5
    for (int i = 0; i < 7; ++i)
        EXPECT_NEAR(barHeight(image, left + 4 + 12 * i), 2 * restingBrandBars[static_cast<std::size_t>(i)], 1)
            << i;
}

TEST(BrandMark, LowEntry_IsADotAsHighAsItIsWide) {
    const std::array<double, 1> bars{0};
    EXPECT_NEAR(barHeight(mark(bars), side / 2), 7, 1);
}

TEST(BrandMark, Tile_IsRoundAndInTheAccent) {
    const QImage image = mark({});
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(8, 8).alpha(), 0);
    EXPECT_NEAR(image.pixelColor(20, 20).green(), accent.green(), 5);
    const QColor end = image.pixelColor(side - 20, side - 20);
    EXPECT_NEAR(end.green(), accent.green() + 26, 5);
    EXPECT_EQ(mark({}, 0).pixelColor(0, 0).alpha(), 255);
}

TEST_F(VLogoTest, AccentChanges_IsDrawnAnew) {
    showControls("VLogo { objectName: 'logo'; size: 72 }");
    EXPECT_EQ(item("logo")->size(), QSizeF(72, 72));
    EXPECT_NEAR(host.grab().pixelColor(6, 18).red(), accent.red(), 8);
    host.settings.setThemeColor(QStringLiteral("teal"));
    EXPECT_NEAR(host.grab().pixelColor(6, 18).red(), 0x80, 8);
}

TEST_F(VLogoTest, RadiusAndBars_AreTaken) {
    showControls("VLogo { objectName: 'logo'; size: 72 }");
    EXPECT_NEAR(item("logo")->property("radius").toReal(), 18.72, 0.001);
    const QImage before = host.grab();
    item("logo")->setProperty("radius", 4);
    EXPECT_EQ(item("logo")->property("radius").toReal(), 4);
    EXPECT_NE(host.grab(), before);
    const QImage square = host.grab();
    item("logo")->setProperty("bars", QVariant::fromValue(QList<qreal>{40, 40, 40}));
    EXPECT_NE(host.grab(), square);
}
