#include "support/main_window_stage.h"
#include "support/wait.h"

#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using namespace std::chrono_literals;

namespace {

class MainWindowTest : public testing::Test, protected MainWindowStage {};

} // namespace

TEST_F(MainWindowTest, Opened_IsAnOrdinaryOpaqueWindowInTheMiddleOfItsScreen) {
    const MainWindow& opened = openWindow();
    EXPECT_TRUE(opened.errors().isEmpty());
    EXPECT_TRUE(opened.isVisible());
    EXPECT_EQ(opened.title(), QStringLiteral("Velmora"));
    EXPECT_EQ(opened.minimumSize(), QSize(760, 560));
    EXPECT_EQ(opened.type(), Qt::Window);
    EXPECT_EQ(opened.color().alpha(), 255);
    const QRect available = opened.screen()->availableGeometry();
    EXPECT_EQ(opened.size(), QSize(980, 680).boundedTo(available.size()).expandedTo(QSize(760, 560)));
    const QPoint off = opened.geometry().center() - available.center();
    EXPECT_LE(off.manhattanLength(), 2);
}

TEST_F(MainWindowTest, WhileOpen_LooksAtTheRightsEveryTwoSeconds) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&openWindow(), 30'000));
    rights.granted = {PrivacyRight::Microphone};
    loop.advance(2s - 1us);
    EXPECT_FALSE(perms.micGranted());
    loop.advance(1us);
    EXPECT_TRUE(perms.micGranted());
    rights.granted.clear();
    loop.advance(2s);
    EXPECT_FALSE(perms.micGranted());
}

TEST_F(MainWindowTest, OutOfSight_DoesNotLookAtTheRights) {
    MainWindow& opened = openWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&opened, 30'000));
    opened.hide();
    ASSERT_TRUE(waitUntil([&] { return !opened.isExposed(); }));
    rights.granted = {PrivacyRight::Microphone};
    loop.advance(10s);
    EXPECT_FALSE(perms.micGranted());
}

TEST_F(MainWindowTest, Opened_LooksAtTheRightsAtOnce) {
    rights.granted = {PrivacyRight::Accessibility};
    (void)openWindow();
    EXPECT_TRUE(perms.accessibilityGranted());
}

TEST_F(MainWindowTest, Closed_SaysSoOnceAndPollsNoMore) {
    MainWindow& opened = openWindow();
    const QSignalSpy closed(&opened, &MainWindow::closed);
    opened.close();
    EXPECT_EQ(closed.size(), 1);
    EXPECT_FALSE(opened.isVisible());
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(MainWindowTest, CloseKeyPressed_Closes) {
    MainWindow& opened = openWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&opened, 30'000));
    const QSignalSpy closed(&opened, &MainWindow::closed);
    QTest::keyClick(static_cast<QWindow*>(&opened), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(closed.size(), 1);
}

TEST_F(MainWindowTest, OpenedAgain_ComesBackWithoutASecondTimer) {
    MainWindow& opened = openWindow();
    const std::size_t timers = loop.pendingTimers();
    opened.setWindowState(Qt::WindowMinimized);
    opened.open();
    EXPECT_FALSE(opened.windowStates().testFlag(Qt::WindowMinimized));
    EXPECT_TRUE(opened.isVisible());
    EXPECT_EQ(loop.pendingTimers(), timers);
}

TEST_F(MainWindowTest, Deleted_LeavesNothingBehind) {
    (void)openWindow();
    nav.openSettings();
    window.reset();
    EXPECT_EQ(loop.pendingTimers(), 0U);
    nav.openMeetings();
    store.add(dictated(loop.date(), QStringLiteral("после")));
    settings.setThemeColor(QStringLiteral("teal"));
    EXPECT_TRUE(engine.isMade());
    EXPECT_TRUE(openWindow().isVisible());
}

TEST_F(MainWindowTest, SchemeChanges_TheBackgroundFollows) {
    const MainWindow& opened = openWindow();
    EXPECT_EQ(opened.color(), QColor(14, 18, 20));
    scheme.setDark(false);
    EXPECT_EQ(opened.color(), QColor(Qt::white));
}
