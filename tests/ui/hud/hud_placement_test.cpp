#include "ui/hud/hud_placement.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

// A second screen on the right, with a panel of 30 at its top and a dock of 50 at its bottom.
const ScreenArea screen{QRect(1920, 200, 1600, 900), QRect(1920, 230, 1600, 820), 0};
const QString medium = QStringLiteral("medium");
const QString bottom = QStringLiteral("bottom");
const QString top = QStringLiteral("top");

} // namespace

TEST(HudPanelFrame, Bottom_IsSixAboveWhatTheDesktopLeavesFree) {
    EXPECT_EQ(hudPanelFrame(screen, medium, bottom), QRect(2480, 230 + 820 - 6 - 66, 480, 66));
}

TEST(HudPanelFrame, Top_OverlapsTheDesktopsPanelByEight) {
    EXPECT_EQ(hudPanelFrame(screen, medium, top), QRect(2480, 222, 480, 66));
}

TEST(HudPanelFrame, TopOfAScreenWithANotch_OverlapsTheNotchsLine) {
    ScreenArea notched = screen;
    notched.safeAreaTop = 38;
    EXPECT_EQ(hudPanelFrame(notched, medium, top), QRect(2480, 200 + 38 - 8, 480, 66));
    EXPECT_EQ(hudPanelFrame(notched, medium, bottom), hudPanelFrame(screen, medium, bottom));
}

TEST(HudPanelFrame, HudPositionIsAnUnknownString_IsTheTop) {
    for (const char* position : {"", "Bottom", "left"})
        EXPECT_EQ(hudPanelFrame(screen, medium, QLatin1String(position)), hudPanelFrame(screen, medium, top));
}

TEST(HudPanelFrame, HudSize_GivesTheHeight) {
    const std::vector<std::pair<const char*, int>> table{
        {"small", 60}, {"medium", 66}, {"large", 76}, {"huge", 66}, {"", 66}};
    for (const auto& [size, height] : table) {
        const QRect frame = hudPanelFrame(screen, QLatin1String(size), bottom);
        EXPECT_EQ(frame.size(), QSize(480, height)) << size;
        EXPECT_EQ(frame.y() + height, 1044) << size;
    }
}

TEST(HudPanelFrame, NothingStored_IsMediumAtTheTop) {
    EXPECT_EQ(hudPanelFrame(screen, std::nullopt, std::nullopt), QRect(2480, 222, 480, 66));
}

TEST(HudPanelFrame, Middle_IsThatOfTheWholeScreen) {
    ScreenArea docked = screen;
    docked.visibleFrame = QRect(2020, 230, 1500, 820); // a dock of 100 on the left
    EXPECT_EQ(hudPanelFrame(docked, medium, bottom).x(), 2480);
}
