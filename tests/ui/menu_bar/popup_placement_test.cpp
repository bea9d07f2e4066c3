#include "ui/menu_bar/popup_placement.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

constexpr QSize size(320, 240);
constexpr ScreenArea topPanel{QRect(0, 0, 1280, 800), QRect(0, 24, 1280, 776)};
constexpr ScreenArea bottomPanel{QRect(0, 0, 1280, 800), QRect(0, 0, 1280, 770)};
constexpr QMargins shadow(30, 20, 30, 40);

int rightOf(const QRect& rect) {
    return rect.x() + rect.width();
}

} // namespace

TEST(PopupFrame, TrayAtTheTop_HangsInTheMiddleBelowTheIcon) {
    EXPECT_EQ(popupFrame(size, QRect(600, 1, 22, 22), topPanel), QRect(451, 28, 320, 240));
    EXPECT_EQ(popupFrame(size, QRect(600, 4, 22, 22), topPanel).y(), 30);
}

TEST(PopupFrame, IconAtTheFarRight_StaysEightPixelsInside) {
    EXPECT_EQ(rightOf(popupFrame(size, QRect(1250, 0, 22, 22), topPanel)), 1272);
}

TEST(PopupFrame, IconAtTheFarLeft_BeginsAtEight) {
    EXPECT_EQ(popupFrame(size, QRect(0, 0, 22, 22), topPanel).x(), 8);
}

TEST(PopupFrame, TrayAtTheBottom_StandsAboveTheIcon) {
    EXPECT_EQ(popupFrame(size, QRect(600, 774, 22, 22), bottomPanel), QRect(451, 526, 320, 240));
}

TEST(PopupFrame, PointerInsideThePanel_KeepsClearOfIt) {
    EXPECT_EQ(popupFrame(size, QRect(600, 5, 1, 1), topPanel).y(), 28);
    const QRect above = popupFrame(size, QRect(600, 795, 1, 1), bottomPanel);
    EXPECT_EQ(above.y() + above.height(), 766);
}

TEST(PopupFrame, PanelAtTheSide_KeepsClearOfIt) {
    const ScreenArea leftPanel{QRect(0, 0, 1280, 800), QRect(48, 0, 1232, 800)};
    EXPECT_EQ(popupFrame(size, QRect(10, 400, 22, 22), leftPanel).x(), 56);
}

TEST(PopupFrame, SecondScreen_StaysOnIt) {
    const ScreenArea second{QRect(1280, 0, 1024, 768), QRect(1280, 0, 1024, 768)};
    EXPECT_EQ(popupFrame(size, QRect(1280, 0, 22, 22), second).x(), 1288);
}

TEST(PopupFrame, NoScreen_TheIconStandsInForIt) {
    EXPECT_EQ(popupFrame(size, QRect(1000, 0, 22, 22), {}), QRect(694, 26, 320, 240));
}

TEST(PopupWindowFrame, RoomAllAround_HoldsTheWholeShadow) {
    EXPECT_EQ(popupWindowFrame(QRect(451, 100, 320, 240), shadow, topPanel), QRect(421, 80, 380, 300));
}

TEST(PopupWindowFrame, AtTheEdges_EndsWhereTheScreenDoes) {
    EXPECT_EQ(popupWindowFrame(QRect(952, 28, 320, 240), shadow, topPanel), QRect(922, 24, 358, 284));
    EXPECT_EQ(popupWindowFrame(QRect(8, 526, 320, 240), shadow, bottomPanel), QRect(0, 506, 358, 264));
}

TEST(PopupWindowFrame, NoScreen_HoldsTheWholeShadow) {
    EXPECT_EQ(popupWindowFrame(QRect(0, 0, 320, 240), shadow, {}), QRect(-30, -20, 380, 300));
}
