#include "ui/hud/level_shapes.h"

#include <gmock/gmock.h>

#include <array>
#include <numbers>

using namespace velmora;
using testing::DoubleEq;
using testing::DoubleNear;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

std::vector<float> silence(std::size_t count = 32) {
    return std::vector<float>(count, 0.0F);
}

} // namespace

TEST(LiveBars, Capacity_FollowsTheWavesWidth) {
    const std::vector<std::pair<qreal, int>> table{
        {80, 16}, {110, 22}, {140, 28}, {80 * 0.62, 9}, {110 * 0.62, 13}, {140 * 0.62, 17}, {4, 0}, {0, 0}};
    for (const auto& [width, bars] : table)
        EXPECT_EQ(liveBarCapacity(width, 3, 2), bars) << width;
}

TEST(LiveBars, LevelsAreEmpty_ThereAreNoBars) {
    EXPECT_THAT(liveBarHeights({}, 22, 20), IsEmpty());
}

TEST(LiveBars, OneLevel_IsOneBarWithTheEndsFactor) {
    EXPECT_THAT(liveBarHeights(std::array{1.0F}, 22, 20), ElementsAre(DoubleNear(20 * 1.3 * 0.7, 1e-9)));
}

TEST(LiveBars, AllLevelsAreZero_BarsStayThreeHigh) {
    EXPECT_THAT(liveBarHeights(silence(), 22, 20), testing::AllOf(SizeIs(22), Each(3.0)));
}

TEST(LiveBars, FullLevelAtTheCentreOfTheLargeSize_OvershootsTheFrame) {
    const std::vector<qreal> heights = liveBarHeights(std::vector<float>(32, 1.0F), 28, 30);
    ASSERT_THAT(heights, SizeIs(28));
    EXPECT_NEAR(heights[14], 39, 1e-9);
    EXPECT_NEAR(heights[0], 39 * 0.7, 1e-9);
    EXPECT_NEAR(heights[7], 39 * (0.7 + 0.3 * std::sin(std::numbers::pi / 4)), 1e-9);
}

TEST(LiveBars, MoreLevelsThanBars_ShowTheLastOnesOldestFirst) {
    const std::array levels{1.0F, 1.0F, 0.0F, 0.5F};
    EXPECT_THAT(liveBarHeights(levels, 2, 20), ElementsAre(3.0, DoubleNear(20 * 0.5 * 1.3 * 1.0, 1e-9)));
}

TEST(LiveBars, FewerLevelsThanBars_SpreadTheEnvelopeOverTheirNumber) {
    const std::array levels{1.0F, 1.0F};
    EXPECT_THAT(liveBarHeights(levels, 22, 20), ElementsAre(DoubleNear(18.2, 1e-9), DoubleNear(26, 1e-9)));
}

TEST(WaveDots, LevelsAreEmpty_ThereAreNoDots) {
    EXPECT_THAT(waveDotDiameters({}, 20), IsEmpty());
}

TEST(WaveDots, OneLevel_IsOneDot) {
    EXPECT_THAT(waveDotDiameters(std::array{1.0F}, 20), ElementsAre(20.0));
}

TEST(WaveDots, AllLevelsAreZero_TwelveDotsAreThreeAcross) {
    EXPECT_THAT(waveDotDiameters(silence(), 14), testing::AllOf(SizeIs(12), Each(3.0)));
}

TEST(WaveDots, Levels_AreTheLastTwelveFromThreeToTheHeight) {
    std::vector<float> levels(20, 1.0F);
    levels[8] = 0.5F;
    levels[19] = 0.25F;
    const std::vector<qreal> dots = waveDotDiameters(levels, 30);
    ASSERT_THAT(dots, SizeIs(12));
    EXPECT_DOUBLE_EQ(dots.front(), 27 * 0.5 + 3);
    EXPECT_DOUBLE_EQ(dots[5], 30);
    EXPECT_DOUBLE_EQ(dots.back(), 27 * 0.25 + 3);
}

TEST(WaveCurve, LessThanTwoLevels_DrawsNothing) {
    EXPECT_TRUE(waveCurvePath({}, {110, 20}).isEmpty());
    EXPECT_TRUE(waveCurvePath(std::array{1.0F}, {110, 20}).isEmpty());
}

TEST(WaveCurve, Levels_MakeABandMirroredAroundTheMiddle) {
    const QPainterPath path = waveCurvePath(std::array{0.25F, 1.0F, 0.5F}, {110, 20});
    std::vector<QPointF> points;
    std::vector<QPainterPath::ElementType> kinds;
    for (int i = 0; i < path.elementCount(); ++i) {
        points.emplace_back(path.elementAt(i));
        kinds.push_back(path.elementAt(i).type);
    }
    // A quadratic curve is kept as a cubic one: three points each.
    ASSERT_THAT(points, SizeIs(11));
    EXPECT_EQ(points[0], QPointF(0, 7.625));
    EXPECT_EQ(kinds[1], QPainterPath::CurveToElement);
    EXPECT_EQ(points[3], QPointF(55, 0.5));
    EXPECT_EQ(points[6], QPointF(110, 5.25));
    EXPECT_EQ(kinds[7], QPainterPath::LineToElement);
    EXPECT_EQ(points[7], QPointF(110, 14.75));
    EXPECT_EQ(points[8], QPointF(55, 19.5));
    EXPECT_EQ(points[9], QPointF(0, 12.375));
    EXPECT_EQ(points[10], points[0]);
    // Its control point is the middle of the straight line: a third and two thirds of it as cubic.
    EXPECT_NEAR(points[1].x(), 55.0 / 3, 1e-9);
    EXPECT_NEAR(points[1].y(), 7.625 - 7.125 / 3, 1e-9);
}

TEST(WaveCurve, AllLevelsAreZero_TheBandHasNoThickness) {
    EXPECT_EQ(waveCurvePath(silence(), {110, 20}).boundingRect(), QRectF(0, 10, 110, 0));
}
