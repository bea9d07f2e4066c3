#include "support/ui/view_host.h"
#include "support/wait.h"
#include "ui/hud/glowing_dot.h"

#include <gtest/gtest.h>

using namespace velmora::test;

TEST(LiveDot, Shown_IsRedInTheMiddle) {
    ViewHost host;
    host.show("Hud", "LiveDot", {{QStringLiteral("size"), 40}});
    EXPECT_EQ(host.grab().pixelColor(20, 20), QColor(0xFF, 0x52, 0x52));
}

TEST(LiveDot, Shown_PulsesBetweenItsSizes) {
    ViewHost host;
    host.show("Hud", "LiveDot", {{QStringLiteral("size"), 40}});
    const auto* dot = host.root()->findChild<velmora::GlowingDot*>();
    ASSERT_TRUE(dot);
    const auto pulse = [&] { return dot->property("pulse").toReal(); };
    qreal smallest = pulse();
    qreal largest = pulse();
    EXPECT_TRUE(waitUntil([&] {
        smallest = std::min(smallest, pulse());
        largest = std::max(largest, pulse());
        return largest > 1.1 && pulse() < 0.9; // there and back again
    }));
    EXPECT_GE(smallest, 0.85);
    EXPECT_LE(largest, 1.15);
}
