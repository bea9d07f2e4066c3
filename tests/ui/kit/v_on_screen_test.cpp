#include "kit_fixture.h"
#include "support/wait.h"

#include <QSignalSpy>
#include <QTest>

using namespace velmora;
using namespace velmora::test;

namespace {

class VOnScreenTest : public KitTest {
protected:
    VOnScreenTest() {
        showControls(
            "Item { objectName: 'tab'; VOnScreen { objectName: 'eye'; onShownChanged: page.count++ } }");
    }
    [[nodiscard]] bool isShown() const { return item("eye")->property("shown").toBool(); }
    [[nodiscard]] bool becomes(bool shown) const {
        return waitUntil([&] { return isShown() == shown; });
    }
};

} // namespace

TEST_F(VOnScreenTest, Window_IsSeenFromItsFirstFrameOn) {
    EXPECT_TRUE(becomes(true));
    host.window().hide();
    EXPECT_TRUE(becomes(false));
    const QSignalSpy frames(&host.window(), &QQuickWindow::frameSwapped);
    host.window().show();
    EXPECT_TRUE(becomes(true));
    EXPECT_FALSE(frames.isEmpty());
    EXPECT_EQ(count(), 3);
}

TEST_F(VOnScreenTest, WhatHoldsItIsHidden_IsNotSeenAtOnce) {
    ASSERT_TRUE(becomes(true));
    item("tab")->setVisible(false);
    EXPECT_FALSE(isShown());
    host.window().hide();
    host.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&host.window(), 30'000));
    EXPECT_FALSE(host.grab().isNull());
    EXPECT_FALSE(isShown());
    item("tab")->setVisible(true);
    EXPECT_TRUE(becomes(true));
}

TEST_F(VOnScreenTest, TakenOutOfTheWindow_IsNotSeen) {
    ASSERT_TRUE(becomes(true));
    item("tab")->setParentItem(nullptr);
    EXPECT_EQ(count(), 2);
}
