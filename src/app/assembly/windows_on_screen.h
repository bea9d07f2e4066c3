#pragma once

#include "app/app_windows.h"
#include "ui/main_window/main_window.h"

namespace velmora {

class Compositing;
class Screens;
class SignIn;
class UserDefaults;

/// The program's windows, as the user sees them.
class WindowsOnScreen final : public AppWindows {
public:
    struct Neighbours {
        UiEngine& engine;
        MainLoop& loop;
        AppSettings& settings;
        UserDefaults& defaults;
        Screens& screens;
        const Compositing& compositing;
        AppNavigator& navigator;
        HistoryStore& history;
        AuthStore& authStore;
        AuthSession& authSession;
        SignIn& signIn;
        Pasteboard& pasteboard;
        Workspace& workspace;
        const InfoDictionary& info;
        Relauncher& relauncher;
        KeyEventMonitors& keys;
        AudioInputs& inputs;
        LevelTest& levelTest;
    };

    explicit WindowsOnScreen(const Neighbours& neighbours)
        : m_neighbours(neighbours) {}

    [[nodiscard]] std::unique_ptr<HudPanel> makeHud(PipelineCoordinator& pipeline) override;
    [[nodiscard]] std::unique_ptr<AppWindow> makeMainWindow(PermissionManager& permissions,
                                                            HotkeyMonitor& hotkey) override;
    [[nodiscard]] std::unique_ptr<AppWindow>
    makeOnboardingWindow(PermissionManager& permissions, PipelineCoordinator& pipeline,
                         std::function<void()> startTestRecording) override;
    void prewarm(PipelineCoordinator& pipeline) override;

private:
    const Neighbours m_neighbours;
};

} // namespace velmora
