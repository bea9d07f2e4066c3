#include "core/screen_recording_permission.h"
#include "core/screen_recording_permission_monitor.h"
#include "support/fake_privacy_rights.h"
#include "support/hand_loop.h"
#include "support/outcome.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto screenRecording = PrivacyRight::ScreenRecording;

class ScreenRecordingPermissionTest : public testing::Test {
protected:
    void activate() { monitor.applicationBecameActive(); }

    HandLoop loop;
    FakePrivacyRights rights;
    std::vector<QStringList> started;
    int terminations = 0;
    Relauncher relauncher{
        {.loop = loop,
         .executable = QStringLiteral("/opt/velmora"),
         .processId = 42,
         .start = [this](const QString&, const QStringList& arguments) { started.push_back(arguments); },
         .dismissModalUIThen = [](const std::function<void()>& then) { then(); },
         .terminate = [this] { ++terminations; }}};
    ScreenRecordingPermission permission{rights, relauncher};
    ScreenRecordingPermissionMonitor monitor{permission};
};

} // namespace

TEST_F(ScreenRecordingPermissionTest, CachedState_IsReadWithoutAProbe) {
    rights.probeable = {screenRecording};
    EXPECT_FALSE(permission.isGrantedCached());
    rights.granted = {screenRecording};
    EXPECT_TRUE(permission.isGrantedCached());
    EXPECT_TRUE(permission.isGranted());
    EXPECT_EQ(rights.probes, 0);
}

TEST_F(ScreenRecordingPermissionTest, ProbeReal_DoesNotBelieveTheCachedState) {
    rights.granted = {screenRecording};
    EXPECT_FALSE(Outcome<bool>(permission.probeReal()).value());
    rights.granted.clear();
    rights.probeable = {screenRecording};
    EXPECT_TRUE(Outcome<bool>(permission.probeReal()).value());
}

TEST_F(ScreenRecordingPermissionTest, ProbeThatFails_IsNoRight) {
    rights.probeable = {screenRecording};
    rights.probeFails = true;
    EXPECT_FALSE(Outcome<bool>(permission.probeReal()).value());
}

TEST_F(ScreenRecordingPermissionTest, RequestRefused_OpensTheSettings) {
    permission.request();
    EXPECT_THAT(rights.requests, ElementsAre(screenRecording));
    EXPECT_THAT(rights.openedSettings, ElementsAre(screenRecording));
}

TEST_F(ScreenRecordingPermissionTest, RequestGranted_OpensNoSettings) {
    rights.grantsRequests = true;
    permission.request();
    EXPECT_TRUE(permission.isGranted());
    EXPECT_THAT(rights.openedSettings, IsEmpty());
}

TEST_F(ScreenRecordingPermissionTest, RelaunchApp_StartsTheDelayedHelperAndTerminates) {
    permission.relaunchApp();
    loop.runPosted();
    EXPECT_THAT(started, ElementsAre(QStringList{QStringLiteral("-c"),
                                                 delayedRelaunchScript(QStringLiteral("/opt/velmora"), 42)}));
    EXPECT_EQ(terminations, 1);
}

TEST_F(ScreenRecordingPermissionTest, MonitorAtCreation_TakesTheCachedState) {
    EXPECT_FALSE(monitor.isGranted());
    rights.granted = {screenRecording};
    const ScreenRecordingPermissionMonitor other(permission);
    EXPECT_TRUE(other.isGranted());
    EXPECT_EQ(other.failedRecheckCount(), 0);
    EXPECT_FALSE(other.didOpenSettings());
    EXPECT_FALSE(other.needsRelaunch());
    EXPECT_EQ(rights.probes, 0);
}

TEST_F(ScreenRecordingPermissionTest, ActiveWithoutHavingOpenedTheSettings_CountStaysZero) {
    activate();
    activate();
    EXPECT_EQ(rights.probes, 2);
    EXPECT_FALSE(monitor.isGranted());
    EXPECT_EQ(monitor.failedRecheckCount(), 0);
    EXPECT_FALSE(monitor.needsRelaunch());
}

TEST_F(ScreenRecordingPermissionTest, TwoReturnsWithoutTheRight_NeedARelaunchUntilAProbeIsGranted) {
    QSignalSpy counted(&monitor, &ScreenRecordingPermissionMonitor::failedRecheckCountChanged);
    monitor.userClickedOpenSettings();
    EXPECT_TRUE(monitor.didOpenSettings());
    EXPECT_THAT(rights.openedSettings, ElementsAre(screenRecording));

    activate();
    EXPECT_EQ(monitor.failedRecheckCount(), 1);
    EXPECT_FALSE(monitor.needsRelaunch());
    activate();
    EXPECT_EQ(monitor.failedRecheckCount(), 2);
    EXPECT_TRUE(monitor.needsRelaunch());
    EXPECT_EQ(counted.count(), 2);

    rights.probeable = {screenRecording};
    activate();
    EXPECT_TRUE(monitor.isGranted());
    EXPECT_EQ(monitor.failedRecheckCount(), 0);
    EXPECT_FALSE(monitor.needsRelaunch());
    EXPECT_TRUE(monitor.didOpenSettings()); // until the flow is reset
}

TEST_F(ScreenRecordingPermissionTest, RecheckNotTriggeredByActivation_NeverRaisesTheCount) {
    monitor.userClickedOpenSettings();
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(Outcome<>(monitor.recheck(false)).succeeded());
    EXPECT_EQ(rights.probes, 3);
    EXPECT_EQ(monitor.failedRecheckCount(), 0);
}

TEST_F(ScreenRecordingPermissionTest, RecheckWhileOneIsUnderWay_ReturnsAtOnceWithoutAProbe) {
    rights.holdAnswers = true;
    monitor.userClickedOpenSettings();
    const Outcome<> first(monitor.recheck(true));
    const Outcome<> second(monitor.recheck(true));
    EXPECT_FALSE(first.isDone());
    EXPECT_TRUE(second.succeeded());
    EXPECT_EQ(rights.probes, 1);
    rights.release();
    EXPECT_TRUE(first.succeeded());
    EXPECT_EQ(monitor.failedRecheckCount(), 1);

    const Outcome<> third(monitor.recheck(true));
    EXPECT_EQ(rights.probes, 2);
    rights.release();
    EXPECT_TRUE(third.succeeded());
    EXPECT_EQ(monitor.failedRecheckCount(), 2);
}

TEST_F(ScreenRecordingPermissionTest, RightTakenAway_IsReportedByTheNextRecheck) {
    rights.probeable = {screenRecording};
    activate();
    QSignalSpy changed(&monitor, &ScreenRecordingPermissionMonitor::isGrantedChanged);
    rights.probeable.clear();
    activate();
    activate();
    ASSERT_EQ(changed.count(), 1);
    EXPECT_FALSE(changed.first().first().toBool());
    EXPECT_FALSE(monitor.isGranted());
}

TEST_F(ScreenRecordingPermissionTest, Reset_ForgetsTheVisitAndTheCount) {
    monitor.userClickedOpenSettings();
    activate();
    activate();
    monitor.reset();
    EXPECT_FALSE(monitor.didOpenSettings());
    EXPECT_EQ(monitor.failedRecheckCount(), 0);
    activate();
    EXPECT_EQ(monitor.failedRecheckCount(), 0);
}

TEST_F(ScreenRecordingPermissionTest, MonitorGoneDuringAProbe_IsNotTouched) {
    rights.holdAnswers = true;
    auto other = std::make_unique<ScreenRecordingPermissionMonitor>(permission);
    const Outcome<> outcome(other->recheck(true));
    other.reset();
    rights.release();
    EXPECT_TRUE(outcome.succeeded());
}
