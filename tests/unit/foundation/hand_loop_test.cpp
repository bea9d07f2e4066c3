#include "support/hand_loop.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using velmora::test::HandLoop;

TEST(HandLoop, Advance_TimersDueInBetween_RunInOrderAtTheirOwnTime) {
    HandLoop loop;
    std::vector<std::pair<char, MainLoop::Duration>> runs;
    const auto note = [&](char name) {
        return [&runs, &loop, name] { runs.emplace_back(name, loop.now().time_since_epoch()); };
    };
    const Timer late = loop.after(30ms, note('b'));
    const Timer early = loop.after(10ms, note('a'));
    const Timer tick = loop.every(20ms, note('t'));
    loop.advance(45ms);
    EXPECT_THAT(runs, testing::ElementsAre(testing::Pair('a', 10ms), testing::Pair('t', 20ms),
                                           testing::Pair('b', 30ms), testing::Pair('t', 40ms)));
}

TEST(HandLoop, Timer_Dropped_NeverRuns) {
    HandLoop loop;
    bool ran = false;
    {
        const Timer timer = loop.after(1ms, [&] { ran = true; });
    }
    loop.advance(1s);
    EXPECT_FALSE(ran);
}

TEST(HandLoop, Timer_DroppedByItsOwnWork_StopsRepeating) {
    HandLoop loop;
    int runs = 0;
    Timer timer;
    timer = loop.every(1ms, [&] {
        ++runs;
        timer.invalidate();
    });
    loop.advance(10ms);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST(MainLoop, Delay_NothingHeld_RunsOnceAndLeavesNothing) {
    HandLoop loop;
    int runs = 0;
    loop.delay(5ms, [&] { ++runs; });
    loop.advance(4ms);
    EXPECT_EQ(runs, 0);
    loop.advance(10ms);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

namespace {

Task<> noteSleep(HandLoop& loop, std::stop_token stop, std::optional<bool>& slept) {
    slept = co_await loop.sleep(90s, stop);
}

} // namespace

TEST(MainLoop, Sleep_TimePasses_ReturnsTrue) {
    HandLoop loop;
    std::optional<bool> slept;
    const auto task = noteSleep(loop, {}, slept);
    loop.advance(89s);
    EXPECT_FALSE(slept.has_value());
    loop.advance(1s);
    EXPECT_EQ(slept, true);
}

TEST(MainLoop, Sleep_StopRequested_ReturnsFalseAtOnce) {
    HandLoop loop;
    std::stop_source stop;
    std::optional<bool> slept;
    const auto task = noteSleep(loop, stop.get_token(), slept);
    stop.request_stop();
    loop.runPosted();
    EXPECT_EQ(slept, false);
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST(MainLoop, Sleep_StopRequestedBefore_DoesNotWait) {
    HandLoop loop;
    std::stop_source stop;
    stop.request_stop();
    std::optional<bool> slept;
    const auto task = noteSleep(loop, stop.get_token(), slept);
    EXPECT_EQ(slept, false);
}
