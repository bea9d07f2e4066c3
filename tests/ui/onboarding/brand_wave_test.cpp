#include "ui/onboarding/brand_wave.h"

#include <gtest/gtest.h>

using namespace velmora;

TEST(BrandWave, WholeTurn_EndsWhereItBegan) {
    const BrandBars start = brandWaveBars(0);
    const BrandBars end = brandWaveBars(1);
    for (std::size_t i = 0; i < start.size(); ++i)
        EXPECT_NEAR(start.at(i), end.at(i), 1e-9);
}

TEST(BrandWave, EveryPhase_StaysWithinItsFrameAndKeepsTheMarksShape) {
    for (double phase = 0; phase < 1; phase += 0.01) {
        const BrandBars bars = brandWaveBars(phase);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            EXPECT_GE(bars.at(i), 3.5);
            EXPECT_LE(bars.at(i), 46);
            EXPECT_LE(bars.at(i), std::max(3.5, restingBrandBars.at(i) * 1.16));
        }
        EXPECT_GT(bars.at(3), bars.at(0));
        EXPECT_GT(bars.at(3), bars.at(6));
    }
}

TEST(BrandWave, Bars_MoveOneAfterTheOther) {
    const auto loudestAt = [](std::size_t bar) {
        double best = 0;
        for (double phase = 0; phase < 1; phase += 0.01)
            if (brandWaveBars(phase).at(bar) > brandWaveBars(best).at(bar))
                best = phase;
        return best;
    };
    EXPECT_NEAR(std::fmod(loudestAt(3) - loudestAt(2) + 1, 1), 0.16, 0.015);
    EXPECT_NEAR(std::fmod(loudestAt(4) - loudestAt(3) + 1, 1), 0.16, 0.015);
}
