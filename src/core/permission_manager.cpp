#include "core/permission_manager.h"

namespace velmora {

PermissionManager::PermissionManager(PrivacyRights& rights, QObject* parent)
    : QObject(parent)
    , m_rights(rights) {}

void PermissionManager::refresh() {
    set(&PermissionManager::m_micGranted, m_rights.isGranted(PrivacyRight::Microphone),
        &PermissionManager::micGrantedChanged);
    set(&PermissionManager::m_accessibilityGranted, m_rights.isGranted(PrivacyRight::Accessibility),
        &PermissionManager::accessibilityGrantedChanged);
    set(&PermissionManager::m_inputMonitoringGranted, m_rights.isGranted(PrivacyRight::InputMonitoring),
        &PermissionManager::inputMonitoringGrantedChanged);
}

Task<> PermissionManager::requestMicrophone() {
    const std::stop_token gone = m_tasks.token();
    const bool granted = co_await m_rights.request(PrivacyRight::Microphone);
    if (!gone.stop_requested())
        set(&PermissionManager::m_micGranted, granted, &PermissionManager::micGrantedChanged);
}

void PermissionManager::requestAccessibility() {
    m_tasks.start(QStringLiteral("accessibility request"),
                  requestOrOpenSettings(PrivacyRight::Accessibility));
}

void PermissionManager::requestInputMonitoring() {
    m_tasks.start(QStringLiteral("input monitoring request"),
                  requestOrOpenSettings(PrivacyRight::InputMonitoring));
}

Task<> PermissionManager::requestOrOpenSettings(PrivacyRight right) {
    const std::stop_token gone = m_tasks.token();
    const bool granted = co_await m_rights.request(right);
    if (gone.stop_requested())
        co_return;
    if (!granted)
        m_rights.openSettings(right);
    refresh();
}

void PermissionManager::openAccessibilitySettings() {
    m_rights.openSettings(PrivacyRight::Accessibility);
}

void PermissionManager::openInputMonitoringSettings() {
    m_rights.openSettings(PrivacyRight::InputMonitoring);
}

void PermissionManager::openMicSettings() {
    m_rights.openSettings(PrivacyRight::Microphone);
}

void PermissionManager::set(bool PermissionManager::*field, bool granted, Changed changed) {
    if (this->*field == granted)
        return;
    this->*field = granted;
    Q_EMIT(this->*changed)(granted);
}

} // namespace velmora
