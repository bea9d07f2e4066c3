#include "ui/hud/hud_metrics.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

struct Row {
    const char* size;
    qreal panel, capsule, dot, waveWidth, waveHeight, divider, text, timer, spinner, cross;
};

constexpr Row medium{"medium", 66, 34, 11, 110, 20, 16, 12.5, 37.5, 18, 13.5};

class HudMetricsTest : public testing::TestWithParam<Row> {
protected:
    static void expectRow(const HudMetrics& metrics, const Row& row) {
        EXPECT_EQ(metrics.panelWidth, 480);
        EXPECT_EQ(metrics.panelHeight, row.panel);
        EXPECT_EQ(metrics.capsuleHeight, row.capsule);
        EXPECT_DOUBLE_EQ(metrics.capsulePadding, row.capsule / 3);
        EXPECT_EQ(metrics.dotDiameter, row.dot);
        EXPECT_EQ(metrics.waveHeight, row.waveHeight);
        EXPECT_EQ(metrics.dividerHeight, row.divider);
        EXPECT_EQ(metrics.textSize, row.text);
        EXPECT_EQ(metrics.timerMinimumWidth, row.timer);
        EXPECT_EQ(metrics.spinnerDiameter, row.spinner);
        EXPECT_EQ(metrics.crossSize, row.cross);
    }
};

} // namespace

TEST_P(HudMetricsTest, Full_IsTheTablesColumn) {
    const HudMetrics metrics = hudMetrics(QLatin1String(GetParam().size), false);
    expectRow(metrics, GetParam());
    EXPECT_EQ(metrics.waveWidth, GetParam().waveWidth);
    EXPECT_EQ(metrics.itemSpacing, 10);
}

TEST_P(HudMetricsTest, Minimal_ChangesTheWavesWidthAndTheSpacingOnly) {
    const HudMetrics metrics = hudMetrics(QLatin1String(GetParam().size), true);
    expectRow(metrics, GetParam());
    EXPECT_DOUBLE_EQ(metrics.waveWidth, GetParam().waveWidth * 0.62);
    EXPECT_EQ(metrics.itemSpacing, 0);
}

INSTANTIATE_TEST_SUITE_P(Sizes, HudMetricsTest,
                         testing::Values(Row{"small", 60, 28, 9, 80, 14, 10, 11, 33, 12, 12}, medium,
                                         Row{"large", 76, 44, 13, 140, 30, 26, 14, 42, 28, 15}),
                         [](const auto& test) { return std::string(test.param.size); });

TEST(HudMetrics, HudSizeIsAnUnknownString_IsTheMiddleColumn) {
    for (const char* size : {"", "Small", "huge", "LARGE"})
        EXPECT_EQ(hudMetrics(QLatin1String(size), false), hudMetrics(QStringLiteral("medium"), false))
            << size;
}

TEST(HudMetrics, MaximumWidths_LeaveTheCapsuleInsideThePanel) {
    for (const char* size : {"small", "medium", "large"}) {
        for (const bool minimal : {false, true}) {
            const HudMetrics metrics = hudMetrics(QLatin1String(size), minimal);
            EXPECT_DOUBLE_EQ(metrics.contentMaximumWidth + 2 * metrics.capsulePadding, 456) << size;
            const qreal beside = minimal ? 0 : metrics.dotDiameter + 0.5 + metrics.timerMinimumWidth + 30;
            EXPECT_DOUBLE_EQ(metrics.dotsMaximumWidth + beside, metrics.contentMaximumWidth) << size;
        }
    }
}
