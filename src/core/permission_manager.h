#pragma once

#include "foundation/task.h"
#include "platform/privacy_rights.h"

#include <QObject>

namespace velmora {

/// The three rights that dictation needs, as they were when somebody last looked. Nothing here polls, and
/// only the requests ask the user.
class PermissionManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool micGranted READ micGranted NOTIFY micGrantedChanged)
    Q_PROPERTY(bool accessibilityGranted READ accessibilityGranted NOTIFY accessibilityGrantedChanged)
    Q_PROPERTY(bool inputMonitoringGranted READ inputMonitoringGranted NOTIFY inputMonitoringGrantedChanged)

public:
    explicit PermissionManager(PrivacyRights& rights, QObject* parent = nullptr);

    [[nodiscard]] bool micGranted() const { return m_micGranted; }
    [[nodiscard]] bool accessibilityGranted() const { return m_accessibilityGranted; }
    [[nodiscard]] bool inputMonitoringGranted() const { return m_inputMonitoringGranted; }

    Q_INVOKABLE void refresh();

    /// Ends when the user has answered.
    Task<> requestMicrophone();
    /// These two also open the settings when the request grants nothing.
    Q_INVOKABLE void requestAccessibility();
    Q_INVOKABLE void requestInputMonitoring();

    Q_INVOKABLE void openAccessibilitySettings();
    Q_INVOKABLE void openInputMonitoringSettings();
    Q_INVOKABLE void openMicSettings();

Q_SIGNALS:
    void micGrantedChanged(bool granted);
    void accessibilityGrantedChanged(bool granted);
    void inputMonitoringGrantedChanged(bool granted);

private:
    using Changed = void (PermissionManager::*)(bool);

    void set(bool PermissionManager::*field, bool granted, Changed changed);
    Task<> requestOrOpenSettings(PrivacyRight right);

    PrivacyRights& m_rights;
    bool m_micGranted = false;
    bool m_accessibilityGranted = false;
    bool m_inputMonitoringGranted = false;
    TaskScope m_tasks;
};

} // namespace velmora
