#include "core/screen_recording_permission_monitor.h"

namespace velmora {

ScreenRecordingPermissionMonitor::ScreenRecordingPermissionMonitor(ScreenRecordingPermission& permission,
                                                                   QObject* parent)
    : QObject(parent)
    , m_permission(permission)
    , m_isGranted(permission.isGrantedCached()) {}

Task<> ScreenRecordingPermissionMonitor::recheck(bool triggeredByActivation) {
    if (m_isChecking)
        co_return;
    const std::stop_token gone = m_tasks.token();
    m_isChecking = true;
    const bool granted = co_await m_permission.probeReal();
    if (gone.stop_requested())
        co_return;
    take(granted, triggeredByActivation);
    m_isChecking = false;
}

void ScreenRecordingPermissionMonitor::take(bool granted, bool triggeredByActivation) {
    setGranted(granted);
    if (granted)
        setFailedRecheckCount(0);
    else if (m_didOpenSettings && triggeredByActivation)
        setFailedRecheckCount(m_failedRecheckCount + 1);
}

void ScreenRecordingPermissionMonitor::applicationBecameActive() {
    m_tasks.start(QStringLiteral("screen recording recheck"), recheck(true));
}

void ScreenRecordingPermissionMonitor::userClickedOpenSettings() {
    setDidOpenSettings(true);
    m_permission.openSystemSettings();
}

void ScreenRecordingPermissionMonitor::reset() {
    setDidOpenSettings(false);
    setFailedRecheckCount(0);
}

void ScreenRecordingPermissionMonitor::setGranted(bool granted) {
    if (m_isGranted == granted)
        return;
    m_isGranted = granted;
    Q_EMIT isGrantedChanged(granted);
}

void ScreenRecordingPermissionMonitor::setFailedRecheckCount(int count) {
    if (m_failedRecheckCount == count)
        return;
    m_failedRecheckCount = count;
    Q_EMIT failedRecheckCountChanged();
}

void ScreenRecordingPermissionMonitor::setDidOpenSettings(bool did) {
    if (m_didOpenSettings == did)
        return;
    m_didOpenSettings = did;
    Q_EMIT didOpenSettingsChanged();
}

} // namespace velmora
