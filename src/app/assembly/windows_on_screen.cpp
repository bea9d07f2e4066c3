#include "app/assembly/windows_on_screen.h"

#include "ui/hud/recording_hud_panel.h"
#include "ui/kit/ui_engine.h"
#include "ui/onboarding/onboarding_window.h"

namespace velmora {
namespace {

class Hud final : public HudPanel {
public:
    template<typename... Arguments>
    explicit Hud(Arguments&&... arguments)
        : m_panel(std::forward<Arguments>(arguments)...) {}
    ~Hud() override { m_panel.orderOut(); }
    Hud(const Hud&) = delete;
    Hud& operator=(const Hud&) = delete;

    void reposition() override { m_panel.reposition(); }
    void orderFrontRegardless() override { m_panel.orderFrontRegardless(); }

private:
    RecordingHUDPanel m_panel;
};

template<typename Window>
class OnScreen final : public AppWindow {
public:
    template<typename... Arguments>
    explicit OnScreen(Arguments&&... arguments)
        : m_window(std::forward<Arguments>(arguments)...) {
        QObject::connect(&m_window, &OrdinaryWindow::closed, [this] { windowWillClose(); });
    }

    void makeKeyAndOrderFront() override { m_window.open(); }

private:
    Window m_window;
};

} // namespace

std::unique_ptr<HudPanel> WindowsOnScreen::makeHud(PipelineCoordinator& pipeline) {
    return std::make_unique<Hud>(m_neighbours.engine, pipeline, m_neighbours.settings, m_neighbours.defaults,
                                 m_neighbours.screens, m_neighbours.compositing);
}

std::unique_ptr<AppWindow> WindowsOnScreen::makeMainWindow(PermissionManager& permissions,
                                                           HotkeyMonitor& hotkey) {
    return std::make_unique<OnScreen<MainWindow>>(MainWindow::Neighbours{
        .engine = m_neighbours.engine,
        .loop = m_neighbours.loop,
        .model = {.store = m_neighbours.history,
                  .pasteboard = m_neighbours.pasteboard,
                  .shared = {.loop = m_neighbours.loop,
                             .nav = m_neighbours.navigator,
                             .perms = permissions,
                             .settings = m_neighbours.settings,
                             .defaults = m_neighbours.defaults,
                             .authStore = m_neighbours.authStore,
                             .authSession = m_neighbours.authSession,
                             .workspace = m_neighbours.workspace,
                             .info = m_neighbours.info,
                             .relauncher = m_neighbours.relauncher,
                             .hotkey = hotkey,
                             .keys = m_neighbours.keys,
                             .inputs = m_neighbours.inputs,
                             .levelTest = m_neighbours.levelTest}},
    });
}

std::unique_ptr<AppWindow> WindowsOnScreen::makeOnboardingWindow(PermissionManager& permissions,
                                                                 PipelineCoordinator& pipeline,
                                                                 std::function<void()> startTestRecording) {
    return std::make_unique<OnScreen<OnboardingWindow>>(
        m_neighbours.engine, OnboardingNeighbours{.loop = m_neighbours.loop,
                                                  .defaults = m_neighbours.defaults,
                                                  .settings = m_neighbours.settings,
                                                  .perms = permissions,
                                                  .pipeline = pipeline,
                                                  .authStore = m_neighbours.authStore,
                                                  .authSession = m_neighbours.authSession,
                                                  .signIn = m_neighbours.signIn,
                                                  .info = m_neighbours.info,
                                                  .startTestRecording = std::move(startTestRecording)});
}

void WindowsOnScreen::prewarm(PipelineCoordinator& pipeline) {
    RecordingHUDPanel::prewarm(m_neighbours.engine, pipeline, m_neighbours.settings, m_neighbours.defaults,
                               m_neighbours.screens, m_neighbours.compositing);
}

} // namespace velmora
