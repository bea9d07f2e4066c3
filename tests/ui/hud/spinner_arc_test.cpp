#include "support/ui/view_host.h"

#include <gtest/gtest.h>

using namespace velmora::test;

namespace {

// What lies on the ring in the middle of each quarter, clockwise from the right.
std::array<bool, 4> litQuarters(const char* angle) {
    ViewHost host;
    host.showSource(QByteArray("import QtQuick\nimport Velmora.Hud\n"
                               "SpinnerArc { diameter: 40; accent: '#ff0000'; angle: ") +
                    angle + " }");
    const QImage picture = host.grab();
    constexpr int offset = 14; // 20 / sqrt(2)
    const auto isLit = [&](int right, int down) {
        return picture.pixelColor(21 + right * offset, 21 + down * offset).red() > 200;
    };
    return {isLit(1, 1), isLit(-1, 1), isLit(-1, -1), isLit(1, -1)};
}

} // namespace

TEST(SpinnerArc, NotTurned_LightsTheFirstQuarterClockwiseFromTheRight) {
    EXPECT_EQ(litQuarters("0"), (std::array{true, false, false, false}));
}

TEST(SpinnerArc, Turned_GoesClockwise) {
    EXPECT_EQ(litQuarters("90"), (std::array{false, true, false, false}));
    EXPECT_EQ(litQuarters("270"), (std::array{false, false, false, true}));
}
