#include "ui/onboarding/accent_glow.h"

#include <gtest/gtest.h>

#include <set>
#include <span>

using namespace velmora;

namespace {

/// The mean opacity of a square around a point, 0 to 255.
double lightAt(const QImage& image, QPoint centre) {
    constexpr int half = 6;
    double sum = 0;
    for (int y = centre.y() - half; y < centre.y() + half; ++y)
        for (int x = centre.x() - half; x < centre.x() + half; ++x)
            sum += qAlpha(image.pixel(x, y));
    return sum / (4 * half * half);
}

} // namespace

TEST(AccentGlow, Light_ComesFromTheTopAndFadesOnAllSides) {
    const QImage glow = accentGlow({400, 300}, QColor(168, 204, 90, 60));
    EXPECT_NEAR(lightAt(glow, {200, 8}), 60, 3);
    EXPECT_LT(lightAt(glow, {8, 8}), 60 / 5);
    EXPECT_NEAR(lightAt(glow, {8, 8}), lightAt(glow, {392, 8}), 1);
    double before = 60;
    for (int y = 30; y < 300; y += 30) {
        const double now = lightAt(glow, {200, y});
        EXPECT_LT(now, before);
        before = now;
    }
    EXPECT_LT(before, 1);
}

TEST(AccentGlow, Shades_AreScatteredByOneStepAndNoColourIsBrighterThanItsOpacity) {
    const QImage glow = accentGlow({400, 300}, QColor(168, 204, 90, 60));
    std::set<int> shades;
    const auto* line = reinterpret_cast<const QRgb*>(glow.constScanLine(100));
    for (const QRgb pixel : std::span(line + 195, 10)) {
        shades.insert(qAlpha(pixel));
        EXPECT_LE(qRed(pixel), qAlpha(pixel));
        EXPECT_LE(qGreen(pixel), qAlpha(pixel));
        EXPECT_LE(qBlue(pixel), qAlpha(pixel));
    }
    EXPECT_EQ(shades.size(), 2U);
    EXPECT_EQ(glow, accentGlow({400, 300}, QColor(168, 204, 90, 60)));
}
