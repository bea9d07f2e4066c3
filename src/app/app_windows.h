#pragma once

#include <functional>
#include <memory>

namespace velmora {

class HotkeyMonitor;
class PermissionManager;
class PipelineCoordinator;

/// The recording capsule; on the screen until the object goes.
class HudPanel {
public:
    virtual ~HudPanel() = default;

    virtual void reposition() = 0;
    /// Shows it above everything else, without the focus.
    virtual void orderFrontRegardless() = 0;
};

/// A window of the program; on the screen until the object goes.
class AppWindow {
public:
    virtual ~AppWindow() = default;

    /// Shows it, or brings it to the front, and gives it the focus.
    virtual void makeKeyAndOrderFront() = 0;

    /// The user has closed it.
    std::function<void()> windowWillClose = [] {};
};

/// Makes what the program shows.
class AppWindows {
public:
    virtual ~AppWindows() = default;

    [[nodiscard]] virtual std::unique_ptr<HudPanel> makeHud(PipelineCoordinator& pipeline) = 0;
    [[nodiscard]] virtual std::unique_ptr<AppWindow> makeMainWindow(PermissionManager& permissions,
                                                                    HotkeyMonitor& hotkey) = 0;
    /// The window of a first start. `startTestRecording` is for those whose hotkey doesn't work.
    [[nodiscard]] virtual std::unique_ptr<AppWindow>
    makeOnboardingWindow(PermissionManager& permissions, PipelineCoordinator& pipeline,
                         std::function<void()> startTestRecording) = 0;
    /// Makes the first capsule quick; called when the start is over.
    virtual void prewarm(PipelineCoordinator& pipeline) = 0;
};

} // namespace velmora
