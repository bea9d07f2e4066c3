#include "platform/linux/desktop_privacy_rights.h"

#include "foundation/user_folders.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"
#include "platform/linux/pulse_monitor_probe.h"
#include "platform/linux/pulse_source.h"
#include "platform/linux/sound_settings.h"

#include <QProcess>

namespace velmora {
namespace {

bool hasMicrophone(PulseConnection& connection) {
    const PulseConnection::Lock lock(connection);
    const auto sources = listPulseSources(connection);
    return sources && !std::ranges::all_of(*sources, &PulseSource::isMonitor);
}

QString helpSection(PrivacyRight right) {
    switch (right) {
    case PrivacyRight::Microphone:
        return QStringLiteral("microphone");
    case PrivacyRight::InputMonitoring:
        return QStringLiteral("input-monitoring");
    case PrivacyRight::Accessibility:
        return QStringLiteral("accessibility");
    case PrivacyRight::ScreenRecording:
        return QStringLiteral("screen-recording");
    }
    return {};
}

// No desktop has a page for what an X server lets its programs do.
bool isAboutSound(PrivacyRight right) {
    return right == PrivacyRight::Microphone || right == PrivacyRight::ScreenRecording;
}

bool openSoundSettings() {
    const auto settings = findSoundSettings(qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
    return settings && QProcess::startDetached(settings->program, settings->arguments);
}

} // namespace

DesktopPrivacyRights::DesktopPrivacyRights(MainLoop& loop, PulseConnection& connection, PulseDevices& devices,
                                           Workspace& workspace)
    : m_loop(loop)
    , m_connection(connection)
    , m_devices(devices)
    , m_workspace(workspace) {}

bool DesktopPrivacyRights::isGranted(PrivacyRight right) {
    switch (right) {
    case PrivacyRight::Microphone:
        return m_devices.kinds().microphones;
    case PrivacyRight::InputMonitoring:
        return m_desktop.canWatchKeys();
    case PrivacyRight::Accessibility:
        return m_desktop.canPostPastes();
    case PrivacyRight::ScreenRecording:
        return m_devices.kinds().monitors;
    }
    return false;
}

Task<bool> DesktopPrivacyRights::probe(PrivacyRight right) {
    if (right == PrivacyRight::Microphone)
        co_return co_await askSoundServer(hasMicrophone);
    if (right == PrivacyRight::ScreenRecording)
        co_return co_await askSoundServer(canRecordOutput);
    co_return isGranted(right);
}

Task<bool> DesktopPrivacyRights::request(PrivacyRight right) {
    return probe(right);
}

Task<bool> DesktopPrivacyRights::askSoundServer(bool (*question)(PulseConnection&)) {
    return m_worker.run(m_loop, [&connection = m_connection, question] { return question(connection); });
}

void DesktopPrivacyRights::openSettings(PrivacyRight right) {
    if (isAboutSound(right) && openSoundSettings())
        return;
    QUrl help = QUrl::fromLocalFile(resourcePath(QStringLiteral("help/permissions.html")));
    help.setFragment(helpSection(right));
    m_workspace.openURL(help);
}

} // namespace velmora
