#include "ui/navigation/app_navigator.h"

#include <gtest/gtest.h>

using namespace velmora;

TEST(AppNavigator, AtStart_ShowsTheHistoryAndNoSettings) {
    const AppNavigator nav;
    EXPECT_EQ(nav.screen(), MainScreen::History);
    EXPECT_EQ(nav.settingsTab(), QStringLiteral("general"));
    EXPECT_FALSE(nav.showSettingsSheet());
}

TEST(AppNavigator, OpenSettings_SetsTheTabAndShowsTheSheet) {
    AppNavigator nav;
    nav.openSettings(QStringLiteral("about"));
    EXPECT_EQ(nav.settingsTab(), QStringLiteral("about"));
    EXPECT_TRUE(nav.showSettingsSheet());
    nav.closeSettings();
    EXPECT_FALSE(nav.showSettingsSheet());
    nav.openSettings();
    EXPECT_EQ(nav.settingsTab(), QStringLiteral("general"));
}

TEST(AppNavigator, OpenAScreen_ClosesTheSettings) {
    AppNavigator nav;
    nav.openSettings();
    nav.openMeetings();
    EXPECT_EQ(nav.screen(), MainScreen::Meetings);
    EXPECT_FALSE(nav.showSettingsSheet());
    nav.openSettings();
    nav.openHistory();
    EXPECT_EQ(nav.screen(), MainScreen::History);
    EXPECT_FALSE(nav.showSettingsSheet());
}
