#include "foundation/async_stream.h"
#include "foundation/error.h"

#include <gmock/gmock.h>

using namespace velmora;
using testing::ElementsAre;

namespace {

struct Consumption {
    std::vector<int> values;
    bool ended = false;
    QString failure;
};

Task<> consume(AsyncStream<int> stream, Consumption& seen) {
    try {
        while (const std::optional<int> value = co_await stream.next())
            seen.values.push_back(*value);
        seen.ended = true;
    } catch (const Error& error) {
        seen.failure = error.localizedDescription();
    }
}

// A parameter lives as long as the task's owner holds the task; a local ends with the body.
Task<> takeOne(AsyncStream<int> parameter, Consumption& seen) {
    AsyncStream<int> stream = std::move(parameter);
    if (const std::optional<int> value = co_await stream.next())
        seen.values.push_back(*value);
}

} // namespace

TEST(AsyncStream, Values_BeforeAndAfterTheConsumerCame_ArriveInOrder) {
    auto [stream, producer] = AsyncStream<int>::make();
    producer.yield(1);
    producer.yield(2);
    Consumption seen;
    const auto task = consume(std::move(stream), seen);
    EXPECT_THAT(seen.values, ElementsAre(1, 2));
    producer.yield(3);
    EXPECT_THAT(seen.values, ElementsAre(1, 2, 3));
    EXPECT_FALSE(seen.ended);
    producer.finish();
    EXPECT_TRUE(seen.ended);
}

TEST(AsyncStream, Fail_ValuesWaiting_AreDeliveredFirst) {
    auto [stream, producer] = AsyncStream<int>::make();
    producer.yield(1);
    producer.fail(std::make_exception_ptr(PlainError(QStringLiteral("broken"))));
    Consumption seen;
    const auto task = consume(std::move(stream), seen);
    EXPECT_THAT(seen.values, ElementsAre(1));
    EXPECT_EQ(seen.failure, QStringLiteral("broken"));
}

TEST(AsyncStream, Producer_GoneWithoutFinish_EndsTheSequence) {
    Consumption seen;
    std::optional<Task<>> task;
    {
        auto [stream, producer] = AsyncStream<int>::make();
        task.emplace(consume(std::move(stream), seen));
    }
    EXPECT_TRUE(seen.ended);
}

TEST(AsyncStream, Consumer_LeavesInTheMiddle_StopsTheProducer) {
    auto [stream, producer] = AsyncStream<int>::make();
    const std::stop_token stop = producer.stopToken();
    Consumption seen;
    const auto task = takeOne(std::move(stream), seen);
    EXPECT_FALSE(stop.stop_requested());
    producer.yield(1);
    EXPECT_TRUE(stop.stop_requested());
    producer.yield(2);
    EXPECT_THAT(seen.values, ElementsAre(1));
}
