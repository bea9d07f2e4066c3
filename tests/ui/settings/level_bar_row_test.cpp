#include "ui/settings/level_bar_row.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

constexpr double dark = 0.16;

} // namespace

TEST(LevelBarRow, EachBar_IsLitAsFarAsTheLevelReaches) {
    struct Case {
        double level;
        int bar;
        double opacity;
    };
    for (const Case& c : {
             Case{0, 0, dark},
             Case{0, 23, dark},
             Case{1, 0, 1},
             Case{1, 23, 1},
             Case{0.5, 11, 1},
             Case{0.5, 12, dark},
             Case{12.5 / 24, 12, dark + 0.42},
             Case{1.5, 23, 1},
             Case{-1, 0, dark},
         })
        EXPECT_NEAR(levelBarOpacity(c.bar, c.level), c.opacity, 1e-9) << c.level << ' ' << c.bar;
}

TEST(LevelBarRow, Row_IsSixteenHigh) {
    const LevelBarRow row;
    EXPECT_EQ(row.implicitHeight(), 16);
    EXPECT_EQ(row.implicitWidth(), 24 * 5 + 23 * 2);
}
