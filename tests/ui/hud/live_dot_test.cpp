#include "support/ui/view_host.h"

#include <gtest/gtest.h>

using namespace velmora::test;

TEST(LiveDot, Shown_IsRedInTheMiddle) {
    ViewHost host;
    host.show("Hud", "LiveDot", {{QStringLiteral("size"), 40}});
    EXPECT_EQ(host.grab().pixelColor(20, 20), QColor(0xFF, 0x52, 0x52));
}
