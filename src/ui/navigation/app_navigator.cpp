#include "ui/navigation/app_navigator.h"

namespace velmora {

void AppNavigator::setScreen(MainScreen screen) {
    if (std::exchange(m_screen, screen) != screen)
        Q_EMIT screenChanged();
}

void AppNavigator::setSettingsTab(const QString& tab) {
    if (std::exchange(m_settingsTab, tab) != tab)
        Q_EMIT settingsTabChanged();
}

void AppNavigator::showSheet(bool shown) {
    if (std::exchange(m_showSettingsSheet, shown) != shown)
        Q_EMIT showSettingsSheetChanged();
}

void AppNavigator::openSettings(const QString& tab) {
    setSettingsTab(tab);
    showSheet(true);
}

void AppNavigator::closeSettings() {
    showSheet(false);
}

void AppNavigator::openHistory() {
    setScreen(MainScreen::History);
    closeSettings();
}

void AppNavigator::openMeetings() {
    setScreen(MainScreen::Meetings);
    closeSettings();
}

} // namespace velmora
