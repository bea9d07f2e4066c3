#include "speech/dictation_line.h"
#include "test_clock.h"

#include <gmock/gmock.h>

#include <thread>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr auto always = DictationLine::Time::max();

class DictationLineTest : public testing::Test {
protected:
    /// A dictation on a thread of its own that takes turns for some pieces, and notes each.
    void dictate(const std::string& name, const std::string& account, int pieces = 1,
                 std::chrono::milliseconds piece = 1s) {
        const auto waiting = line.waiting();
        places.push_back(std::make_unique<DictationLine::Place>(line, account, piece * pieces));
        threads.emplace_back([this, name, pieces, piece, &place = *places.back()] {
            for (int i = 0; i < pieces; ++i) {
                const auto turn = place.turn(piece, {}, always);
                const std::scoped_lock lock(mutex);
                order.push_back(name);
            }
        });
        waitFor(waiting + 1);
    }
    void waitFor(std::size_t count) const {
        const auto patience = std::chrono::steady_clock::now() + 30s;
        while (line.waiting() != count && std::chrono::steady_clock::now() < patience) {
            std::this_thread::yield();
        }
        ASSERT_EQ(line.waiting(), count);
    }
    /// Lets the line move until it is empty.
    [[nodiscard]] std::vector<std::string> orderAfter(std::optional<DictationLine::Turn>& turn) {
        turn.reset();
        threads.clear();
        return order;
    }

    TestClock time;
    DictationLine line{1, time.steady()};
    std::vector<std::unique_ptr<DictationLine::Place>> places;
    std::mutex mutex;
    std::vector<std::string> order;
    std::vector<std::jthread> threads;
};

TEST_F(DictationLineTest, OfOneAccount_TheFirstComesFirst) {
    DictationLine::Place first(line, "ann", 1s);
    auto turn = first.turn(1s, {}, always);
    dictate("1", "ann");
    dictate("2", "ann");
    dictate("3", "ann");
    EXPECT_THAT(orderAfter(turn), ElementsAre("1", "2", "3"));
}

TEST_F(DictationLineTest, OfManyAccounts_TheFirstComesFirst) {
    DictationLine::Place first(line, "ann", 1s);
    auto turn = first.turn(1s, {}, always);
    dictate("bob", "bob");
    dictate("cid", "cid");
    dictate("dan", "dan");
    EXPECT_THAT(orderAfter(turn), ElementsAre("bob", "cid", "dan"));
}

TEST_F(DictationLineTest, TwentyWaitingOfOneAccount_DoNotDelayTheFirstOfAnother) {
    DictationLine::Place first(line, "ann", 1s);
    auto turn = first.turn(1s, {}, always);
    for (int i = 0; i < 20; ++i) {
        dictate("ann", "ann");
    }
    dictate("bob", "bob");
    const auto all = orderAfter(turn);
    ASSERT_EQ(all.size(), 21U);
    EXPECT_EQ(all.front(), "bob");
}

TEST_F(DictationLineTest, WhoHasHadLess_GoesNext_HoweverLongTheOthersPieces) {
    DictationLine::Place first(line, "ann", 30s);
    auto turn = first.turn(30s, {}, always);
    dictate("ann", "ann", 1, 30s);
    dictate("bob", "bob");
    dictate("bob again", "bob");
    dictate("bob still", "bob");
    EXPECT_THAT(orderAfter(turn), ElementsAre("bob", "bob again", "bob still", "ann"));
}

TEST_F(DictationLineTest, Newcomers_DoNotGoBeforeOnesThatWaitForLong) {
    // Both have had ten seconds, so that the one that came first is next, whoever is new.
    DictationLine::Place one(line, "ann", 100s);
    DictationLine::Place other(line, "bob", 100s);
    { const auto turn = one.turn(10s, {}, always); }
    { const auto turn = other.turn(10s, {}, always); }
    auto turn = other.turn(1s, {}, always);
    dictate("ann", "ann");
    dictate("cid", "cid");
    EXPECT_THAT(orderAfter(turn), ElementsAre("ann", "cid"));
}

TEST_F(DictationLineTest, AccountThatWasAway_HasNothingSavedUp) {
    DictationLine::Place busy(line, "ann", 100s);
    for (int i = 0; i < 10; ++i) {
        const auto turn = busy.turn(10s, {}, always);
    }
    DictationLine::Place late(line, "bob", 100s);
    { const auto turn = late.turn(10s, {}, always); }
    auto turn = late.turn(10s, {}, always);
    dictate("ann", "ann", 1, 10s);
    dictate("bob", "bob", 1, 10s);
    EXPECT_THAT(orderAfter(turn), ElementsAre("ann", "bob"));
}

TEST_F(DictationLineTest, OnlySoMany_HaveTurnsAtATime) {
    DictationLine two(2);
    DictationLine::Place place(two, "ann", 10s);
    const auto now = std::chrono::steady_clock::now();
    const auto first = place.turn(1s, {}, now);
    {
        const auto second = place.turn(1s, {}, now);
        EXPECT_TRUE(first);
        EXPECT_TRUE(second);
        EXPECT_FALSE(place.turn(1s, {}, now));
    }
    EXPECT_TRUE(place.turn(1s, {}, now));
}

TEST_F(DictationLineTest, WaitThatGetsTooLate_EndsWithoutATurn_AndLeavesTheLine) {
    DictationLine::Place place(line, "ann", 10s);
    auto turn = place.turn(1s, {}, always);
    EXPECT_FALSE(place.turn(1s, {}, std::chrono::steady_clock::now() + 20ms));
    EXPECT_EQ(line.waiting(), 0U);
    turn.reset();
    EXPECT_TRUE(place.turn(1s, {}, always)) << "nobody has it who doesn't wait any more";
}

TEST_F(DictationLineTest, Stop_EndsTheWait) {
    DictationLine::Place place(line, "ann", 10s);
    const auto turn = place.turn(1s, {}, always);
    std::stop_source stop;
    const std::jthread stopper([&] {
        waitFor(1);
        stop.request_stop();
    });
    EXPECT_FALSE(place.turn(1s, stop.get_token(), always));
    EXPECT_EQ(line.waiting(), 0U);
}

/// Work takes half as long as its sound until something else is known.
TEST_F(DictationLineTest, Forecast_CountsWhatIsAheadInOnesOwnAccount) {
    EXPECT_EQ(line.forecast("ann", 10s).wait, 0s);
    EXPECT_EQ(line.forecast("ann", 10s).work, 5s);
    const DictationLine::Place one(line, "ann", 100s);
    const DictationLine::Place other(line, "ann", 20s);
    EXPECT_EQ(line.forecast("ann", 10s).wait, 60s);
    EXPECT_EQ(line.forecast("ann", 10s).work, 5s);
}

TEST_F(DictationLineTest, Forecast_CountsOfEachOtherAccountWhatOneGetsOneself) {
    const DictationLine::Place one(line, "ann", 1000s);
    const DictationLine::Place other(line, "bob", 4s);
    EXPECT_EQ(line.forecast("cid", 10s).wait, 5s + 2s);
}

TEST_F(DictationLineTest, Forecast_SharesTheWorkAmongTheTurns_AndNobodyWaitsWhereOneIsFree) {
    const DictationLine two(2);
    DictationLine busy(2);
    const DictationLine::Place one(busy, "ann", 1000s);
    EXPECT_EQ(busy.forecast("ann", 10s).wait, 0s);
    const DictationLine::Place other(busy, "ann", 1000s);
    EXPECT_EQ(busy.forecast("ann", 10s).wait, 500s + 2500ms - 5s);
}

TEST_F(DictationLineTest, Forecast_FallsWithWhatIsDone_AndWithWhoLeaves) {
    std::optional<DictationLine::Place> place(std::in_place, line, "ann", 100s);
    {
        const auto turn = place->turn(40s, {}, always);
        time.now += 20s;
    }
    EXPECT_EQ(line.forecast("ann", 0s).wait, 30s);
    { const auto turn = place->turn(100s, {}, always); }
    EXPECT_EQ(line.forecast("ann", 0s).wait, 0s) << "more than it said is not less than nothing";
    place.reset();
    EXPECT_EQ(line.forecast("ann", 10s).wait, 0s);
}

TEST_F(DictationLineTest, Forecast_LearnsThePace) {
    DictationLine::Place place(line, "ann", 100s);
    for (int i = 0; i < 100; ++i) {
        const auto turn = place.turn(30s, {}, always);
        time.now += 60s;
    }
    EXPECT_GT(line.forecast("bob", 10s).work, 19s);
    EXPECT_LE(line.forecast("bob", 10s).work, 20s);
    for (int i = 0; i < 100; ++i) {
        const auto turn = place.turn(30s, {}, always);
        time.now += 3s;
    }
    EXPECT_LT(line.forecast("bob", 10s).work, 2s);
}

} // namespace
} // namespace velmora::server
