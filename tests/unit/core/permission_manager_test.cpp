#include "core/permission_manager.h"
#include "support/fake_privacy_rights.h"
#include "support/outcome.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PermissionManagerTest : public testing::Test {
protected:
    FakePrivacyRights rights;
    PermissionManager permissions{rights};
};

} // namespace

TEST_F(PermissionManagerTest, BeforeTheFirstRefresh_NothingIsGranted) {
    rights.granted = {PrivacyRight::Microphone, PrivacyRight::Accessibility, PrivacyRight::InputMonitoring};
    EXPECT_FALSE(permissions.micGranted());
    EXPECT_FALSE(permissions.accessibilityGranted());
    EXPECT_FALSE(permissions.inputMonitoringGranted());
}

TEST_F(PermissionManagerTest, RefreshWithoutAnyRight_AllFalseAndNobodyIsAsked) {
    permissions.refresh();
    EXPECT_FALSE(permissions.micGranted());
    EXPECT_FALSE(permissions.accessibilityGranted());
    EXPECT_FALSE(permissions.inputMonitoringGranted());
    EXPECT_THAT(rights.requests, IsEmpty());
    EXPECT_THAT(rights.openedSettings, IsEmpty());
    EXPECT_EQ(rights.probes, 0);
}

TEST_F(PermissionManagerTest, Refresh_EachRightHasItsOwnField) {
    rights.granted = {PrivacyRight::Microphone};
    permissions.refresh();
    EXPECT_TRUE(permissions.micGranted());
    EXPECT_FALSE(permissions.accessibilityGranted());
    EXPECT_FALSE(permissions.inputMonitoringGranted());

    rights.granted = {PrivacyRight::Accessibility};
    permissions.refresh();
    EXPECT_FALSE(permissions.micGranted());
    EXPECT_TRUE(permissions.accessibilityGranted());
    EXPECT_FALSE(permissions.inputMonitoringGranted());

    rights.granted = {PrivacyRight::InputMonitoring};
    permissions.refresh();
    EXPECT_FALSE(permissions.micGranted());
    EXPECT_FALSE(permissions.accessibilityGranted());
    EXPECT_TRUE(permissions.inputMonitoringGranted());
}

TEST_F(PermissionManagerTest, Refresh_ReportsOnlyWhatChanged) {
    QSignalSpy mic(&permissions, &PermissionManager::micGrantedChanged);
    QSignalSpy input(&permissions, &PermissionManager::inputMonitoringGrantedChanged);
    rights.granted = {PrivacyRight::InputMonitoring};
    permissions.refresh();
    permissions.refresh();
    EXPECT_EQ(mic.count(), 0);
    ASSERT_EQ(input.count(), 1);
    EXPECT_TRUE(input.first().first().toBool());
    rights.granted.clear();
    permissions.refresh();
    ASSERT_EQ(input.count(), 2);
    EXPECT_FALSE(input.last().first().toBool());
}

TEST_F(PermissionManagerTest, RequestMicrophone_TakesTheAnswerWhenItComes) {
    rights.grantsRequests = true;
    rights.holdAnswers = true;
    const Outcome<> outcome(permissions.requestMicrophone());
    EXPECT_FALSE(outcome.isDone());
    EXPECT_FALSE(permissions.micGranted());
    rights.release();
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_TRUE(permissions.micGranted());
    EXPECT_THAT(rights.requests, ElementsAre(PrivacyRight::Microphone));
}

TEST_F(PermissionManagerTest, RequestMicrophoneRefused_IsNoErrorAndOpensNoSettings) {
    rights.granted = {PrivacyRight::Microphone};
    permissions.refresh();
    rights.granted.clear();
    const Outcome<> outcome(permissions.requestMicrophone());
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_FALSE(permissions.micGranted());
    EXPECT_THAT(rights.openedSettings, IsEmpty());
}

TEST_F(PermissionManagerTest, RequestAccessibilityGranted_RefreshesAndOpensNoSettings) {
    rights.grantsRequests = true;
    permissions.requestAccessibility();
    EXPECT_TRUE(permissions.accessibilityGranted());
    EXPECT_THAT(rights.requests, ElementsAre(PrivacyRight::Accessibility));
    EXPECT_THAT(rights.openedSettings, IsEmpty());
}

TEST_F(PermissionManagerTest, RequestAccessibilityRefused_OpensItsSettingsThenRefreshes) {
    rights.granted = {PrivacyRight::Microphone};
    permissions.requestAccessibility();
    EXPECT_FALSE(permissions.accessibilityGranted());
    EXPECT_TRUE(permissions.micGranted()); // the refresh looks at all of them
    EXPECT_THAT(rights.openedSettings, ElementsAre(PrivacyRight::Accessibility));
}

TEST_F(PermissionManagerTest, RequestInputMonitoringRefused_OpensItsSettings) {
    permissions.requestInputMonitoring();
    EXPECT_FALSE(permissions.inputMonitoringGranted());
    EXPECT_THAT(rights.requests, ElementsAre(PrivacyRight::InputMonitoring));
    EXPECT_THAT(rights.openedSettings, ElementsAre(PrivacyRight::InputMonitoring));
}

TEST_F(PermissionManagerTest, RequestInputMonitoringGranted_Refreshes) {
    rights.grantsRequests = true;
    permissions.requestInputMonitoring();
    EXPECT_TRUE(permissions.inputMonitoringGranted());
    EXPECT_THAT(rights.openedSettings, IsEmpty());
}

TEST_F(PermissionManagerTest, OpenSettings_EachOpensItsOwnAndAsksNobody) {
    permissions.openMicSettings();
    permissions.openAccessibilitySettings();
    permissions.openInputMonitoringSettings();
    EXPECT_THAT(rights.openedSettings, ElementsAre(PrivacyRight::Microphone, PrivacyRight::Accessibility,
                                                   PrivacyRight::InputMonitoring));
    EXPECT_THAT(rights.requests, IsEmpty());
}

TEST(PermissionManager, GoneWhileTheUserIsAsked_TheAnswerIsDropped) {
    FakePrivacyRights rights;
    rights.holdAnswers = true;
    auto permissions = std::make_unique<PermissionManager>(rights);
    const Outcome<> outcome(permissions->requestMicrophone());
    permissions->requestAccessibility();
    permissions.reset();
    rights.release();
    rights.release();
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_THAT(rights.openedSettings, IsEmpty());
}
