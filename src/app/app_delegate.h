#pragma once

#include "app/app_windows.h"
#include "backend/auth_callback.h"
#include "backend/auth_store.h"
#include "core/hotkey_gesture_gate.h"
#include "core/hotkey_monitor.h"
#include "core/permission_manager.h"
#include "core/pipeline_coordinator.h"
#include "platform/instance_link.h"
#include "ui/menu_bar/menu_bar_controller.h"
#include "ui/navigation/app_navigator.h"

#include <QObject>

namespace velmora {

class SignIn;

/// Creates the long-lived objects, connects them with callbacks, receives what other processes send (callback
/// URLs and commands), and decides which windows there are. It has no logic of its own beyond that; what it
/// must get right is order.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    struct Neighbours {
        MainLoop& loop;
        UserDefaults& defaults;
        AppSettings& settings;
        EventTapFactory& taps;
        AuthStore& authStore;
        AccountSession& account;
        SignIn& signIn;
        PipelineCoordinator::Neighbours pipeline;
        PrivacyRights& rights;
        AppNavigator& navigator;
        AppWindows& windows;
        StatusItem& statusItem;
        Screens& screens;
        Compositing& compositing;
        ClickWatch& clicks;
        UiEngine& engine;
        QString applicationSupportFolder;
        std::function<void()> terminate;
    };

    explicit AppDelegate(const Neighbours& neighbours, QObject* parent = nullptr);

    /// The start sequence.
    void applicationDidFinishLaunching();
    /// What a second start of the program, a browser or a key binding asks for.
    void handleCommand(const InstanceCommand& command);

    /// Shows the main window. Meetings win over the history, and that over a settings tab; with none of them
    /// it shows what it showed last.
    void openMain(const std::optional<QString>& tab, bool toHistory = false, bool toMeetings = false);
    /// Shows the first-run window where the user has left it, or from its first step with `forceRestart`.
    void showOnboarding(bool forceRestart);
    /// Dictates for three seconds.
    void startTestRecording();
    /// Closes the settings and the main window and runs the callback a moment later, so that nothing of them
    /// is in the way of a relaunch.
    void dismissModalUIThen(std::function<void()> callback);
    /// The user has come to one of the windows, perhaps from the desktop's settings.
    void handleAppBecameActive();
    /// A sound device has come or gone.
    void devicesChanged();

    [[nodiscard]] const PipelineCoordinator& pipeline() const { return m_pipeline; }
    [[nodiscard]] const HotkeyMonitor& hotkey() const { return m_hotkey; }

private:
    void runLegacyV1Migration();
    void prewarmMicrophone();
    void createMenuBar();
    void connectGate();
    void connectHotkey();
    void startHotkeyRetryTimer();
    void watchPipeline();
    void showHud(const PipelineState& state);
    void watchInputMonitoring();
    void prewarmWindows();

    void handleGetURLEvent(const QString& url);
    void handleAuthURL(const AuthCallback& callback);
    /// Drops the window when its work is done.
    void windowWillClose(std::shared_ptr<AppWindow>& window);
    void reloadAccount();

    MainLoop& m_loop;
    UserDefaults& m_defaults;
    AppSettings& m_settings;
    AuthStore& m_authStore;
    AccountSession& m_account;
    SignIn& m_signIn;
    AppNavigator& m_navigator;
    AppWindows& m_windows;
    StatusItem& m_statusItem;
    Screens& m_screens;
    Compositing& m_compositing;
    ClickWatch& m_clicks;
    UiEngine& m_engine;
    const QString m_applicationSupportFolder;
    const std::function<void()> m_terminate;

    PipelineCoordinator m_pipeline;
    PermissionManager m_permissions;
    HotkeyMonitor m_hotkey;
    HotkeyGestureGate m_gate;
    std::unique_ptr<MenuBarController> m_menuBar;
    std::unique_ptr<HudPanel> m_hud;         // only while it is visible
    std::shared_ptr<AppWindow> m_mainWindow; // the windows: only while they are open
    std::shared_ptr<AppWindow> m_onboardingWindow;
    std::vector<std::shared_ptr<AppWindow>> m_closingWindows; // for a turn of the loop
    Timer m_hotkeyRetryTimer;
    Timer m_prewarmTimer;
    TaskScope m_tasks;
};

} // namespace velmora
