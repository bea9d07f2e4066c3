#pragma once

#include "app/activation_observer.h"
#include "app/app_delegate.h"
#include "app/assembly/windows_on_screen.h"
#include "backend/auth_session.h"
#include "backend/backend_dictate_client.h"
#include "backend/qt_http_transport.h"
#include "backend/sign_in.h"
#include "core/level_test.h"
#include "core/relauncher.h"
#include "core/screen_recording_permission_monitor.h"
#include "core/undelivered_text.h"
#include "foundation/info_dictionary.h"
#include "foundation/process_folder.h"
#include "foundation/qt_main_loop.h"
#include "foundation/user_folders.h"
#include "foundation/worker.h"
#include "platform/linux/desktop_color_scheme.h"
#include "platform/linux/desktop_notifications.h"
#include "platform/linux/desktop_privacy_rights.h"
#include "platform/linux/desktop_screens.h"
#include "platform/linux/ffmpeg_audio_codec.h"
#include "platform/linux/no_desktop_paste.h"
#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"
#include "platform/linux/pulse_sound_player.h"
#include "platform/linux/tray_status_item.h"
#include "platform/linux/x11_click_watch.h"
#include "platform/linux/x11_compositing.h"
#include "platform/linux/x11_event_tap_factory.h"
#include "platform/linux/x11_key_event_monitors.h"
#include "platform/linux/x11_paste_queue.h"
#include "platform/linux/x11_task_bar.h"
#include "platform/linux/x11_workspace.h"
#include "ui/kit/v_theme.h"
#include "ui/qml_engine.h"

namespace velmora {

/// Every object of the running program, in the order in which they are made.
class Application {
public:
    /// What the program finds where it runs; measurements bring their own.
    struct Setup {
        InfoDictionary info = InfoDictionary::load();
        QString supportFolder = applicationSupportFolder();
        QString defaultsPath = velmora::defaultsPath();
        std::function<std::unique_ptr<AudioEngine>(PulseConnection&, PulseDevices&)> makeEngine =
            [](PulseConnection& pulse, PulseDevices& devices) {
                return std::make_unique<PulseAudioEngine>(pulse, &devices);
            };
    };

    Application();
    explicit Application(const Setup& setup);

    /// Runs the start sequence, then what the program was started for.
    void launch(const InstanceCommand& command);
    /// Does what another process asks for, after what is queued already: the asker isn't kept waiting.
    void queueCommand(const InstanceCommand& command);

    [[nodiscard]] AppDelegate& delegate() { return m_delegate; }
    [[nodiscard]] AuthStore& authStore() { return m_authStore; }

private:
    [[nodiscard]] Pasteboard& pasteboard();
    [[nodiscard]] KeyPoster& keyPoster();

    const InfoDictionary m_info;
    QtMainLoop m_loop;
    UserDefaults m_defaults;
    AppSettings m_settings{m_defaults};
    HistoryStore m_history;

    AuthStore m_authStore;
    QtHttpTransport m_sessionTransport{m_loop};
    AuthSession m_session;
    QtHttpTransport m_dictationTransport{m_loop};
    ThreadWorker m_recordingReader;
    BackendDictateClient m_dictation{m_dictationTransport, m_session, m_loop, m_recordingReader};

    PulseConnection m_pulse;
    PulseDevices m_devices{m_pulse};
    std::unique_ptr<AudioEngine> m_engine;
    PulseAudioEngine m_levelTestEngine{m_pulse, &m_devices};
    LevelTest m_levelTest{m_loop, m_defaults, m_levelTestEngine};
    FfmpegAudioCodec m_codec;
    ProcessFolder m_recordings;
    AudioRecorder m_recorder;
    PulseSoundPlayer m_player;
    SoundCue m_sounds{m_settings, m_player};

    std::unique_ptr<X11PasteQueue> m_pasteQueue; // none where there is no X11 session
    NoDesktopPaste m_noDesktop;
    TextInjector m_injector;
    X11Workspace m_workspace;
    SignIn m_signIn;
    X11EventTapFactory m_taps;
    X11KeyEventMonitors m_keyMonitors;

    DesktopPrivacyRights m_rights{m_loop, m_pulse, m_devices, m_workspace};
    Relauncher m_relauncher;
    ScreenRecordingPermission m_screenRecording{m_rights, m_relauncher};
    ScreenRecordingPermissionMonitor m_screenRecordingMonitor{m_screenRecording};

    DesktopColorScheme m_colorScheme;
    VTheme m_theme{m_settings, m_colorScheme};
    X11Compositing m_compositing;
    X11ClickWatch m_clicks;
    X11TaskBar m_taskBar;
    DesktopScreens m_screens;
    TrayStatusItem m_statusItem;
    AppNavigator m_navigator;
    UiEngine m_uiEngine{makeQmlEngine};
    WindowsOnScreen m_windows;
    AppDelegate m_delegate;
    DesktopNotifications m_notifications;
    UndeliveredText m_undelivered{m_delegate.pipeline(), keyPoster(), m_injector, m_notifications};
    ActivationObserver m_activation;
};

} // namespace velmora
