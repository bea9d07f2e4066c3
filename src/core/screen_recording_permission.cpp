#include "core/screen_recording_permission.h"

#include "foundation/error.h"

namespace velmora {

ScreenRecordingPermission::ScreenRecordingPermission(PrivacyRights& rights, Relauncher& relauncher)
    : m_rights(rights)
    , m_relauncher(relauncher) {}

bool ScreenRecordingPermission::isGrantedCached() const {
    return m_rights.isGranted(PrivacyRight::ScreenRecording);
}

Task<bool> ScreenRecordingPermission::probeReal() {
    try {
        co_return co_await m_rights.probe(PrivacyRight::ScreenRecording);
    } catch (const Error&) {
        co_return false;
    }
}

void ScreenRecordingPermission::request() {
    m_tasks.start(QStringLiteral("screen recording request"), requestOrOpenSettings());
}

Task<> ScreenRecordingPermission::requestOrOpenSettings() {
    const std::stop_token gone = m_tasks.token();
    const bool granted = co_await m_rights.request(PrivacyRight::ScreenRecording);
    if (!granted && !gone.stop_requested())
        openSystemSettings();
}

void ScreenRecordingPermission::openSystemSettings() {
    m_rights.openSettings(PrivacyRight::ScreenRecording);
}

void ScreenRecordingPermission::relaunchApp() {
    m_relauncher.relaunchWithDelay();
}

} // namespace velmora
