#include "support/ui/view_host.h"

#include <gmock/gmock.h>

using namespace velmora::test;

TEST(MenuItemRow, Shown_HasItsLabel) {
    ViewHost host;
    host.show("MenuBar", "MenuItemRow", {{QStringLiteral("label"), QStringLiteral("История")}});
    EXPECT_THAT(host.texts(), testing::ElementsAre(QStringLiteral("История")));
}
