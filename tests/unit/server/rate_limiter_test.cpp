#include "accounts/rate_limiter.h"
#include "test_clock.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;

class RateLimiterTest : public testing::Test {
protected:
    TestClock time;
    RateLimiter limiter{2, 60s, time.clock()};
};

TEST_F(RateLimiterTest, BelowTheLimit_Passes_ThenSaysHowLongToWait) {
    EXPECT_EQ(limiter.take("a"), 0s);
    time.now += 10s;
    EXPECT_EQ(limiter.take("a"), 0s);
    EXPECT_EQ(limiter.take("a"), 50s);
}

TEST_F(RateLimiterTest, Refused_IsNotCounted) {
    static_cast<void>(limiter.take("a"));
    static_cast<void>(limiter.take("a"));
    EXPECT_EQ(limiter.take("a"), 60s);
    time.now += 60s;
    EXPECT_EQ(limiter.take("a"), 0s);
}

TEST_F(RateLimiterTest, Keys_AreApart) {
    static_cast<void>(limiter.take("a"));
    static_cast<void>(limiter.take("a"));
    EXPECT_EQ(limiter.take("b"), 0s);
}

TEST_F(RateLimiterTest, Reset_Forgets) {
    static_cast<void>(limiter.take("a"));
    static_cast<void>(limiter.take("a"));
    limiter.reset("a");
    EXPECT_EQ(limiter.take("a"), 0s);
}

} // namespace
} // namespace velmora::server
