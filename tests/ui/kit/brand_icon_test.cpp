#include "ui/kit/brand_icon.h"

#include <gtest/gtest.h>

using namespace velmora;

TEST(BrandIcon, EverySize_IsTheMarkInTheAccentWithFreeCorners) {
    const QIcon icon = brandIcon(QColor(0x80, 0xCB, 0xC4));
    EXPECT_EQ(icon.availableSizes().size(), 6);
    for (const QSize& size : icon.availableSizes()) {
        const QImage picture = icon.pixmap(size).toImage();
        EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0) << size.width();
        const QColor side = picture.pixelColor(size.width() / 2, size.height() / 10 + 1);
        EXPECT_GT(side.blue(), side.red()) << size.width();
        EXPECT_GT(qGray(side.rgb()), 120) << size.width();
        // At 16 pixels the bar in the middle is thinner than one of them.
        const int bar = qGray(picture.pixel(size.width() / 2, size.height() / 2));
        EXPECT_LT(bar, qGray(side.rgb()) - 40) << size.width();
    }
}
