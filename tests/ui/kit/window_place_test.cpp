#include "ui/kit/window_place.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

constexpr WindowSizes sizes{.content = {980, 680}, .minimum = {760, 560}};

} // namespace

TEST(WindowPlace, LargeScreen_IsInItsMiddleWithTheWantedSizes) {
    EXPECT_EQ(windowPlace(QRect(100, 24, 1920, 1056), sizes),
              (WindowPlace{QRect(570, 212, 980, 680), QSize(760, 560)}));
}

TEST(WindowPlace, ScreenJustLargeEnough_LeavesRoomForTheTitleBar) {
    EXPECT_EQ(windowPlace(QRect(0, 0, 1000, 720), sizes).frame, QRect(10, 40, 980, 680));
}

TEST(WindowPlace, SmallScreen_FillsItAndMayBeAsSmallAsItIs) {
    EXPECT_EQ(windowPlace(QRect(0, 0, 640, 400), sizes),
              (WindowPlace{QRect(0, 40, 640, 360), QSize(640, 360)}));
}
