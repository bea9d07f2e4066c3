#pragma once

#include "app/app_windows.h"
#include "ui/main_window/main_window.h"

namespace velmora {

class Compositing;
class Screens;
class UserDefaults;

/// The program's windows, as the user sees them.
class WindowsOnScreen final : public AppWindows {
public:
    struct Neighbours {
        UiEngine& engine;
        MainLoop& loop;
        AppSettings& settings;
        const UserDefaults& defaults;
        Screens& screens;
        const Compositing& compositing;
        AppNavigator& navigator;
        HistoryStore& history;
        AuthStore& authStore;
        AuthSession& authSession;
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
    void prewarm(PipelineCoordinator& pipeline) override;

private:
    const Neighbours m_neighbours;
};

} // namespace velmora
