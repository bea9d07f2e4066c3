#pragma once

#include "core/screen_recording_permission.h"

#include <QObject>

namespace velmora {

/// Looks again at the right to capture other programs whenever the user comes back to this one, and notices
/// when a grant doesn't take effect before a relaunch.
class ScreenRecordingPermissionMonitor : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isGranted READ isGranted NOTIFY isGrantedChanged)
    Q_PROPERTY(int failedRecheckCount READ failedRecheckCount NOTIFY failedRecheckCountChanged)
    Q_PROPERTY(bool needsRelaunch READ needsRelaunch NOTIFY failedRecheckCountChanged)
    Q_PROPERTY(bool didOpenSettings READ didOpenSettings NOTIFY didOpenSettingsChanged)

public:
    explicit ScreenRecordingPermissionMonitor(ScreenRecordingPermission& permission,
                                              QObject* parent = nullptr);

    /// The last known state.
    [[nodiscard]] bool isGranted() const { return m_isGranted; }
    /// Visits to the settings, by the program's own button, that brought no right.
    [[nodiscard]] int failedRecheckCount() const { return m_failedRecheckCount; }
    [[nodiscard]] bool needsRelaunch() const { return m_failedRecheckCount > 1; }
    [[nodiscard]] bool didOpenSettings() const { return m_didOpenSettings; }

    /// Probes; while a probe is under way it returns at once.
    Task<> recheck(bool triggeredByActivation);
    void applicationBecameActive();

    Q_INVOKABLE void userClickedOpenSettings();
    /// A fresh permission flow begins or ends.
    void reset();

Q_SIGNALS:
    void isGrantedChanged(bool granted);
    void failedRecheckCountChanged();
    void didOpenSettingsChanged();

private:
    void take(bool granted, bool triggeredByActivation);
    void setGranted(bool granted);
    void setFailedRecheckCount(int count);
    void setDidOpenSettings(bool did);

    ScreenRecordingPermission& m_permission;
    bool m_isGranted;
    int m_failedRecheckCount = 0;
    bool m_didOpenSettings = false;
    bool m_isChecking = false;
    TaskScope m_tasks;
};

} // namespace velmora
