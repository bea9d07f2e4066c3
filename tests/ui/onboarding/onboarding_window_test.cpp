#include "onboarding_fixture.h"
#include "support/fake_color_scheme.h"
#include "support/wait.h"
#include "ui/kit/ui_engine.h"
#include "ui/kit/v_theme.h"
#include "ui/onboarding/onboarding_window.h"
#include "ui/qml_engine.h"

#include <QQuickItem>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

class OnboardingWindowTest : public OnboardingFixture {
protected:
    OnboardingWindow& openWindow() {
        window = std::make_unique<OnboardingWindow>(engineOfViews, stage.neighbours);
        window->open();
        return *window;
    }
    [[nodiscard]] OnboardingModel& model() {
        return *window->rootObject()->property("model").value<OnboardingModel*>();
    }

    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    UiEngine engineOfViews{makeQmlEngine};
    std::unique_ptr<OnboardingWindow> window;
};

} // namespace

TEST_F(OnboardingWindowTest, Opened_IsAnOrdinaryWindowOfOneSize) {
    const OnboardingWindow& opened = openWindow();
    EXPECT_TRUE(opened.errors().isEmpty());
    EXPECT_EQ(opened.title(), QStringLiteral("Velmora"));
    EXPECT_EQ(opened.type(), Qt::Window);
    EXPECT_EQ(opened.color().alpha(), 255);
    EXPECT_EQ(opened.size(), QSize(680, 580).boundedTo(opened.screen()->availableSize()));
    EXPECT_EQ(opened.minimumSize(), opened.size());
    EXPECT_EQ(opened.maximumSize(), opened.size());
    EXPECT_FALSE(opened.flags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(opened.flags().testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(opened.flags().testFlag(Qt::WindowCloseButtonHint));
}

TEST_F(OnboardingWindowTest, WhileOpen_LooksAtTheRightsAtOnceAndEveryTwoSeconds) {
    stage.rights.granted = {PrivacyRight::Accessibility};
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&openWindow(), 30'000));
    EXPECT_TRUE(stage.perms.accessibilityGranted());
    stage.rights.granted = {PrivacyRight::Microphone};
    loop.advance(2s);
    EXPECT_TRUE(stage.perms.micGranted());
}

TEST_F(OnboardingWindowTest, SessionEndsBehindTheSignIn_TheNextLookGoesBackToIt) {
    stage.signedIn();
    storeStep(OnboardingModel::TutorialDictation);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&openWindow(), 30'000));
    EXPECT_EQ(model().step(), OnboardingModel::TutorialDictation);
    auth.clear();
    loop.advance(2s);
    EXPECT_EQ(model().step(), OnboardingModel::Auth);
}

TEST_F(OnboardingWindowTest, OutOfSight_NothingMoves) {
    OnboardingWindow& opened = openWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&opened, 30'000));
    const QObject* timeline = opened.rootObject()->findChild<QObject*>(QStringLiteral("timeline"));
    ASSERT_TRUE(timeline);
    EXPECT_TRUE(waitUntil([&] { return timeline->property("running").toBool(); }));
    opened.hide();
    EXPECT_TRUE(waitUntil([&] { return !timeline->property("running").toBool(); }));
    opened.show();
    EXPECT_TRUE(waitUntil([&] { return timeline->property("running").toBool(); }));
}

TEST_F(OnboardingWindowTest, LastStepDone_ClosesItself) {
    stage.signedIn();
    storeStep(OnboardingModel::TutorialHotkey);
    OnboardingWindow& opened = openWindow();
    const QSignalSpy closed(&opened, &OnboardingWindow::closed);
    model().setTutorial2Text(QStringLiteral("готово"));
    model().proceed();
    EXPECT_EQ(closed.size(), 1);
    EXPECT_FALSE(opened.isVisible());
    EXPECT_TRUE(settings.hasOnboarded());
}

TEST_F(OnboardingWindowTest, CloseKeyPressed_Closes) {
    OnboardingWindow& opened = openWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&opened, 30'000));
    const QSignalSpy closed(&opened, &OnboardingWindow::closed);
    QTest::keyClick(static_cast<QWindow*>(&opened), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(OnboardingWindowTest, ProgramEnds_IsNoClosingByTheUser) {
    OnboardingWindow& opened = openWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&opened, 30'000));
    const QSignalSpy closed(&opened, &OnboardingWindow::closed);
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(closed.size(), 0);
}

TEST_F(OnboardingWindowTest, Deleted_LeavesNothingBehind) {
    stage.signedIn();
    storeStep(OnboardingModel::TutorialHotkey);
    (void)openWindow();
    window.reset();
    EXPECT_EQ(loop.pendingTimers(), 0U);
    record();
    auth.clear();
    settings.setThemeColor(QStringLiteral("teal"));
    EXPECT_TRUE(openWindow().isVisible());
}
