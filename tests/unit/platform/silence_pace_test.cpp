#include "platform/linux/silence_pace.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using namespace velmora;

namespace {

constexpr SilencePace::TimePoint loss{100s};

} // namespace

TEST(SilencePace, Take_NotBegun_IsNothing) {
    SilencePace pace(48'000);
    EXPECT_FALSE(pace.isActive());
    EXPECT_EQ(pace.take(loss + 1s), 0);
}

TEST(SilencePace, Take_TimePasses_KeepsUpWithItWithoutDrift) {
    SilencePace pace(44'100);
    pace.begin(loss);
    EXPECT_EQ(pace.take(loss), 0);
    std::int64_t taken = 0;
    for (auto now = loss; now <= loss + 10s; now += 7ms)
        taken += pace.take(now);
    taken += pace.take(loss + 10s);
    EXPECT_EQ(taken, 441'000);
}

TEST(SilencePace, Take_InputDeliversAgain_LeavesRoomForItsFrames) {
    SilencePace pace(48'000);
    pace.begin(loss);
    EXPECT_EQ(pace.take(loss + 1s, 960), 48'000 - 960);
}

TEST(SilencePace, Take_InputDeliversMoreThanTimePassed_IsNothing) {
    SilencePace pace(48'000);
    pace.begin(loss);
    EXPECT_EQ(pace.take(loss + 10ms, 960), 0);
    EXPECT_EQ(pace.take(loss + 20ms), 960);
}

TEST(SilencePace, Begin_Twice_CountsFromTheFirst) {
    SilencePace pace(1'000);
    pace.begin(loss);
    EXPECT_EQ(pace.take(loss + 1s), 1'000);
    pace.begin(loss + 1s);
    EXPECT_EQ(pace.take(loss + 2s), 1'000);
}

TEST(SilencePace, Begin_AfterEnd_CountsAnew) {
    SilencePace pace(1'000);
    pace.begin(loss);
    EXPECT_EQ(pace.take(loss + 1s), 1'000);
    pace.end();
    EXPECT_EQ(pace.take(loss + 2s), 0);
    pace.begin(loss + 5s);
    EXPECT_EQ(pace.take(loss + 6s), 1'000);
}
