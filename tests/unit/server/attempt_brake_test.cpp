#include "accounts/attempt_brake.h"
#include "test_clock.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

class AttemptBrakeTest : public testing::Test {
protected:
    /// Takes and waits for its moment, as an honest client would.
    milliseconds attempt(const std::string& key = "a") {
        const auto answer = brake.take(key);
        EXPECT_TRUE(answer.granted);
        time.now += answer.wait;
        return answer.wait;
    }

    TestClock time;
    AttemptBrake brake{{.free = 2,
                        .firstDistance = 1s,
                        .longestDistance = 4s,
                        .longestWait = 5s,
                        .memory = 10min,
                        .keys = 100},
                       time.steady()};
};

TEST_F(AttemptBrakeTest, TheFirstAreFree_ThenTheDistanceDoublesUpToItsBound) {
    EXPECT_EQ(attempt(), 0s);
    EXPECT_EQ(attempt(), 0s);
    EXPECT_EQ(attempt(), 1s);
    EXPECT_EQ(attempt(), 2s);
    EXPECT_EQ(attempt(), 4s);
    EXPECT_EQ(attempt(), 4s);
}

TEST_F(AttemptBrakeTest, TimeThatHasPassed_IsPartOfTheDistance) {
    for (int i = 0; i < 4; ++i) {
        static_cast<void>(attempt());
    }
    time.now += 3s;
    EXPECT_GT(attempt(), 900ms);
    time.now += 4s;
    EXPECT_EQ(attempt(), 0s);
}

TEST_F(AttemptBrakeTest, ManyAtOnce_GetPlacesOneBehindTheOther_AndTheRestIsRefused) {
    for (int i = 0; i < 4; ++i) {
        static_cast<void>(attempt());
    }
    const auto first = brake.take("a");
    EXPECT_TRUE(first.granted);
    EXPECT_EQ(first.wait, 4s);
    const auto second = brake.take("a");
    EXPECT_FALSE(second.granted);
    EXPECT_EQ(second.wait, 3s);
    time.now += 3s;
    EXPECT_TRUE(brake.take("a").granted);
}

TEST_F(AttemptBrakeTest, Keys_AreApart) {
    for (int i = 0; i < 5; ++i) {
        static_cast<void>(attempt("a"));
    }
    EXPECT_EQ(attempt("b"), 0s);
}

TEST_F(AttemptBrakeTest, Forgotten_IsAsNew) {
    for (int i = 0; i < 5; ++i) {
        static_cast<void>(attempt());
    }
    brake.forget("a");
    EXPECT_EQ(attempt(), 0s);
    EXPECT_EQ(attempt(), 0s);
    EXPECT_EQ(attempt(), 1s);
}

TEST_F(AttemptBrakeTest, Forgiven_CountForNothing) {
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(attempt(), 0s);
        brake.forgive("a");
    }
    brake.forgive("unknown");
}

TEST_F(AttemptBrakeTest, Time_GivesAttemptsBack) {
    for (int i = 0; i < 3; ++i) {
        static_cast<void>(attempt());
    }
    // Half of the memory, half of what is free.
    time.now += 5min;
    EXPECT_EQ(attempt(), 0s);
    EXPECT_EQ(attempt(), 2s);
    time.now += 10min;
    EXPECT_EQ(attempt(), 0s);
    EXPECT_EQ(attempt(), 0s);
}

TEST_F(AttemptBrakeTest, WhoIsQuietForLong_IsForgotten) {
    for (const std::string key : {"a", "b", "c"}) {
        static_cast<void>(attempt(key));
        time.now += 1min;
    }
    EXPECT_EQ(brake.size(), 3U);
    time.now += 8min;
    static_cast<void>(attempt("d"));
    EXPECT_EQ(brake.size(), 2U) << "a and b were quiet for ten minutes and more";
}

TEST_F(AttemptBrakeTest, Keys_AreTenThousandUnlessSaidOtherwise) {
    AttemptBrake usual({}, time.steady());
    for (int i = 0; i < 20'000; ++i) {
        static_cast<void>(usual.take("key " + std::to_string(i)));
    }
    EXPECT_EQ(usual.size(), 10'000U);
}

TEST_F(AttemptBrakeTest, ManyKeys_ArePaidForByTheQuietestOnes) {
    for (int i = 0; i < 4; ++i) {
        static_cast<void>(attempt("busy"));
    }
    for (int i = 0; i < 10'000; ++i) {
        static_cast<void>(brake.take("key " + std::to_string(i)));
        if (i % 50 == 0) {
            time.now += 4s;
            EXPECT_TRUE(brake.take("busy").granted);
        }
        ASSERT_LE(brake.size(), 100U);
    }
    // Still known for what it does, for it did it all the time.
    EXPECT_EQ(brake.take("busy").wait, 4s);
}

} // namespace
} // namespace velmora::server
