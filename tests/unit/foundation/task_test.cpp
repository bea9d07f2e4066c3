#include "foundation/error.h"
#include "foundation/log.h"
#include "support/hand_loop.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using velmora::test::HandLoop;

namespace {

Task<> touchAfterWait(HandLoop& loop, std::stop_token stop, int& touches) {
    co_await loop.sleep(1s);
    if (!stop.stop_requested())
        ++touches;
}

Task<> failAfterWait(HandLoop& loop) {
    co_await loop.sleep(1s);
    throw PlainError(QStringLiteral("сломалось"));
}

} // namespace

TEST(TaskScope, Start_NobodyHoldsTheTask_RunsToItsEnd) {
    HandLoop loop;
    int touches = 0;
    TaskScope scope;
    scope.start(QStringLiteral("touch"), touchAfterWait(loop, scope.token(), touches));
    loop.advance(1s);
    EXPECT_EQ(touches, 1);
}

TEST(TaskScope, Destroyed_TaskWaiting_SeesTheStop) {
    HandLoop loop;
    int touches = 0;
    {
        TaskScope scope;
        scope.start(QStringLiteral("touch"), touchAfterWait(loop, scope.token(), touches));
    }
    loop.advance(1s);
    EXPECT_EQ(touches, 0);
}

TEST(TaskScope, Failure_OfATaskNobodyAwaits_IsLoggedAndDropped) {
    QStringList lines;
    const LogCapture capture([&lines](const QString& line) { lines.append(line); });
    HandLoop loop;
    TaskScope scope;
    scope.start(QStringLiteral("refresh"), failAfterWait(loop));
    loop.advance(1s);
    EXPECT_EQ(lines, QStringList{QStringLiteral("[Velmora] refresh: сломалось")});
}
