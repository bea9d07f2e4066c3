#pragma once

#include "backend/auth_callback.h"
#include "backend/auth_store.h"
#include "core/hotkey_gesture_gate.h"
#include "core/hotkey_monitor.h"
#include "core/pipeline_coordinator.h"
#include "platform/instance_link.h"

#include <QObject>

namespace velmora {

class SignIn;

/// Creates the long-lived objects, connects them with callbacks, and receives what other processes send:
/// callback URLs and commands. It has no logic of its own beyond that; what it must get right is order.
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
        QString applicationSupportFolder;
    };

    explicit AppDelegate(const Neighbours& neighbours, QObject* parent = nullptr);

    /// The start sequence.
    void applicationDidFinishLaunching();
    /// What a second start of the program, a browser or a key binding asks for.
    void handleCommand(const InstanceCommand& command);

    [[nodiscard]] const PipelineCoordinator& pipeline() const { return m_pipeline; }
    [[nodiscard]] const HotkeyMonitor& hotkey() const { return m_hotkey; }

private:
    void runLegacyV1Migration();
    void prewarmMicrophone();
    void connectGate();
    void connectHotkey();
    void startHotkeyRetryTimer();
    void watchPipeline();

    void handleGetURLEvent(const QString& url);
    void handleAuthURL(const AuthCallback& callback);
    void handleAppBecameActive();
    void reloadAccount();

    MainLoop& m_loop;
    UserDefaults& m_defaults;
    AppSettings& m_settings;
    AuthStore& m_authStore;
    AccountSession& m_account;
    SignIn& m_signIn;
    const QString m_applicationSupportFolder;

    PipelineCoordinator m_pipeline;
    HotkeyMonitor m_hotkey;
    HotkeyGestureGate m_gate;
    Timer m_hotkeyRetryTimer;
    TaskScope m_tasks;
};

} // namespace velmora
