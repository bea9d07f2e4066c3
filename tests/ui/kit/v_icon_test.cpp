#include "kit_fixture.h"
#include "ui/kit/v_icon_view.h"

using namespace velmora;
using namespace velmora::test;

namespace {

class VIconViewTest : public KitTest {};

const QColor ink(0x11, 0x88, 0xEE);

std::string nameOf(VIcon icon) {
    return std::string(vIconName(icon).latin1());
}

int drawnPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
    return count;
}

// Whether whatever is opaque has that colour.
bool isAllOf(const QImage& image, const QColor& color) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() == 255 && pixel != color)
                return false;
        }
    }
    return true;
}

class EveryIcon : public testing::TestWithParam<int> {
protected:
    VIcon icon = static_cast<VIcon>(GetParam());
};

} // namespace

TEST_P(EveryIcon, AtAnySize_IsDrawnInTheColourAlone) {
    for (const int size : {11, 16, 20, 40}) {
        const QImage image = renderIcon(icon, size, ink);
        ASSERT_EQ(image.size(), QSize(size, size));
        EXPECT_GE(drawnPixels(image), size) << size;
        EXPECT_LT(drawnPixels(image), size * size * 2 / 3) << size;
        EXPECT_TRUE(isAllOf(image, ink)) << size;
    }
}

TEST_P(EveryIcon, Drawing_StaysInsideItsSquare) {
    const QImage image = renderIcon(icon, 96, ink);
    for (int i = 0; i < 96; ++i) {
        for (const QPoint point : {QPoint(i, 0), QPoint(i, 95), QPoint(0, i), QPoint(95, i)})
            ASSERT_EQ(qAlpha(image.pixel(point)), 0) << point.x() << ' ' << point.y();
    }
}

TEST_P(EveryIcon, Drawing_IsNotThatOfAnother) {
    const QImage image = renderIcon(icon, 48, ink);
    for (int other = 0; other < GetParam(); ++other)
        EXPECT_NE(image, renderIcon(static_cast<VIcon>(other), 48, ink)) << nameOf(static_cast<VIcon>(other));
}

INSTANTIATE_TEST_SUITE_P(VIcon, EveryIcon, testing::Range(0, vIconCount),
                         [](const auto& each) { return nameOf(static_cast<VIcon>(each.param)); });

TEST_F(VIconViewTest, ColourOrIconChanges_IsDrawnAnew) {
    showControls("VIconView { objectName: 'icon'; icon: VIcon.video; size: 40; color: 'red' }");
    EXPECT_EQ(host.grab().pixelColor(15, 20), QColor(Qt::red));
    item("icon")->setProperty("color", ink);
    EXPECT_EQ(host.grab().pixelColor(15, 20), ink);
    const QImage before = host.grab();
    item("icon")->setProperty("icon", static_cast<int>(VIcon::plus));
    EXPECT_NE(host.grab(), before);
}
