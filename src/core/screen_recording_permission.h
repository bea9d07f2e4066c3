#pragma once

#include "core/relauncher.h"
#include "platform/privacy_rights.h"

namespace velmora {

/// The right to capture what other programs play. It holds no state: what was seen last is its monitor's.
class ScreenRecordingPermission {
public:
    ScreenRecordingPermission(PrivacyRights& rights, Relauncher& relauncher);

    /// Without waiting; may be out of date.
    [[nodiscard]] bool isGrantedCached() const;
    [[nodiscard]] bool isGranted() const { return isGrantedCached(); }
    /// Tries the capture itself. A failure is a right that isn't there.
    Task<bool> probeReal();

    /// Asks for the right, and opens the settings when that grants nothing.
    void request();
    void openSystemSettings();
    void relaunchApp();

private:
    Task<> requestOrOpenSettings();

    PrivacyRights& m_rights;
    Relauncher& m_relauncher;
    TaskScope m_tasks;
};

} // namespace velmora
