#include "ui/menu_bar/menu_bar_icon_look.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace velmora;
using testing::Each;
using testing::Gt;
using testing::Pointwise;
namespace state = velmora::pipeline_state;

namespace {

constexpr double slack = 1e-6;
const QColor accent(0x12, 0x34, 0x56);

MATCHER(Near, "") {
    return std::abs(std::get<0>(arg) - std::get<1>(arg)) < slack;
}

// Of the bars from left to right.
constexpr std::array<double, 7> envelope{0.7278823270, 0.8682214306, 0.9653391062, 1.0,
                                         0.9653391062, 0.8682214306, 0.7278823270};

BrandBars envelopeTimes(const BrandBars& heights) {
    BrandBars bars{};
    for (std::size_t i = 0; i < bars.size(); ++i)
        bars[i] = envelope[i] * heights[i];
    return bars;
}

} // namespace

TEST(MenuBarIconMode, EveryPipelineState_HasItsMode) {
    const std::vector<std::pair<PipelineState, MenuBarIconMode>> table{
        {state::Idle{}, MenuBarIconMode::Idle},
        {state::Recording{1}, MenuBarIconMode::Recording},
        {state::StreamingRecording{}, MenuBarIconMode::Recording},
        {state::Error{QStringLiteral("x")}, MenuBarIconMode::Error},
        {state::Transcribing{}, MenuBarIconMode::Processing},
        {state::Cleaning{}, MenuBarIconMode::Processing},
        {state::StreamingCleanup{}, MenuBarIconMode::Processing},
    };
    for (const auto& [pipelineState, mode] : table)
        EXPECT_EQ(menuBarIconMode(pipelineState), mode) << pipelineState.index();
}

TEST(MenuBarIconMode, OnlyRecordingAndProcessing_Move) {
    EXPECT_TRUE(isMoving(MenuBarIconMode::Recording));
    EXPECT_TRUE(isMoving(MenuBarIconMode::Processing));
    EXPECT_FALSE(isMoving(MenuBarIconMode::Idle));
    EXPECT_FALSE(isMoving(MenuBarIconMode::Error));
}

TEST(IconGlow, EveryMode_HasItsLight) {
    EXPECT_EQ(iconGlow(MenuBarIconMode::Idle, accent), (IconGlow{Qt::transparent, 0, 0}));
    EXPECT_EQ(iconGlow(MenuBarIconMode::Recording, accent), (IconGlow{QColor(0xFF, 0x52, 0x52), 0.5, 3.5}));
    EXPECT_EQ(iconGlow(MenuBarIconMode::Processing, accent), (IconGlow{accent, 0.4, 3.0}));
    EXPECT_EQ(iconGlow(MenuBarIconMode::Error, accent), (IconGlow{QColor(0xFF, 0x52, 0x52), 0.6, 4.0}));
}

TEST(VoiceBars, LastSevenLevels_AreTheBarsFromLeftToRight) {
    const std::vector<float> levels{1, 1, 0, 0.125F, 0.25F, 0.375F, 0.5F, 0.625F, 0.75F};
    EXPECT_THAT(voiceBars(levels), Pointwise(Near(), envelopeTimes({4, 11.6, 19.2, 26.8, 34.4, 42, 42})));
}

TEST(VoiceBars, FewerThanSevenLevels_LeftBarsAreAtTheirMinimum) {
    const std::vector<float> levels{1, 0.5F};
    EXPECT_THAT(voiceBars(levels), Pointwise(Near(), envelopeTimes({4, 4, 4, 4, 4, 42, 34.4})));
    EXPECT_THAT(voiceBars({}), Pointwise(Near(), envelopeTimes({4, 4, 4, 4, 4, 4, 4})));
}

TEST(WaveBars, AtZero_FollowTheSineFromBarToBar) {
    BrandBars expected{};
    for (std::size_t i = 0; i < expected.size(); ++i)
        expected[i] = (1 - std::sin(0.7 * static_cast<double>(i))) * 11 + 8;
    EXPECT_THAT(waveBars(0), Pointwise(Near(), envelopeTimes(expected)));
}

TEST(WaveBars, OnePhaseLater_StandsOneBarFurther) {
    const BrandBars now = waveBars(3);
    const BrandBars later = waveBars(3 + 0.7 / 2.2);
    for (std::size_t i = 1; i < now.size(); ++i)
        EXPECT_NEAR(later[i] / envelope[i], now[i - 1] / envelope[i - 1], slack) << i;
}

TEST(WaveBars, OnePeriodLater_AreTheSame) {
    EXPECT_THAT(waveBars(1 + waveBarsPeriod), Pointwise(Near(), waveBars(1)));
    EXPECT_THAT(waveBars(1), Each(Gt(5.8)));
}
