#include "window_fixture.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class HistoryViewTest : public WindowFixture {};

} // namespace

TEST_F(HistoryViewTest, Opened_ListsTheLast24Hours) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("Привет"));
    show();
    EXPECT_TRUE(host.has(QStringLiteral("14:00, Velmora, Привет")));
}
