#pragma once

#include "foundation/worker.h"
#include "platform/linux/x11_rights.h"
#include "platform/privacy_rights.h"
#include "platform/workspace.h"

namespace velmora {

class PulseConnection;
class PulseDevices;

/// The rights as the session's sound server and X server give them: nobody grants them here, the facility is
/// there or it isn't.
class DesktopPrivacyRights final : public PrivacyRights {
public:
    DesktopPrivacyRights(MainLoop& loop, PulseConnection& connection, PulseDevices& devices,
                         Workspace& workspace);

    [[nodiscard]] bool isGranted(PrivacyRight right) override;
    Task<bool> probe(PrivacyRight right) override;
    /// There is nobody to ask: tries again, which may bring back a connection that was lost.
    Task<bool> request(PrivacyRight right) override;
    /// The desktop's page for sound devices where it has one, else a help page of ours.
    void openSettings(PrivacyRight right) override;

private:
    /// Has the sound server asked by a thread that may wait for it.
    Task<bool> askSoundServer(bool (*question)(PulseConnection&));

    MainLoop& m_loop;
    PulseConnection& m_connection;
    PulseDevices& m_devices;
    Workspace& m_workspace;
    X11Rights m_desktop;
    ThreadWorker m_worker; // the last to come: its end waits for a question that is under way
};

} // namespace velmora
