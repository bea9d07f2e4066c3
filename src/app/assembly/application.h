#pragma once

#include "app/app_delegate.h"
#include "backend/auth_session.h"
#include "backend/backend_dictate_client.h"
#include "backend/qt_http_transport.h"
#include "backend/sign_in.h"
#include "foundation/info_dictionary.h"
#include "foundation/qt_main_loop.h"
#include "foundation/user_folders.h"
#include "platform/linux/ffmpeg_audio_codec.h"
#include "platform/linux/no_desktop_paste.h"
#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_sound_player.h"
#include "platform/linux/x11_event_tap_factory.h"
#include "platform/linux/x11_paste_queue.h"
#include "platform/linux/x11_workspace.h"

namespace velmora {

/// Every object of the running program, in the order in which they are made.
class Application {
public:
    /// What the program finds where it runs; measurements bring their own.
    struct Setup {
        InfoDictionary info = InfoDictionary::load();
        QString supportFolder = applicationSupportFolder();
        QString defaultsPath = velmora::defaultsPath();
        std::function<std::unique_ptr<AudioEngine>(PulseConnection&)> makeEngine =
            [](PulseConnection& pulse) { return std::make_unique<PulseAudioEngine>(pulse); };
    };

    explicit Application(const Setup& setup = {});

    /// Runs the start sequence, then what the program was started for.
    void launch(const InstanceCommand& command);
    /// Does what another process asks for, after what is queued already: the asker isn't kept waiting.
    void queueCommand(const InstanceCommand& command);

    [[nodiscard]] AppDelegate& delegate() { return m_delegate; }
    [[nodiscard]] AuthStore& authStore() { return m_authStore; }

private:
    QtMainLoop m_loop;
    UserDefaults m_defaults;
    AppSettings m_settings{m_defaults};
    HistoryStore m_history;

    AuthStore m_authStore;
    QtHttpTransport m_transport{m_loop};
    AuthSession m_session;
    BackendDictateClient m_dictation{m_transport, m_session};

    PulseConnection m_pulse;
    std::unique_ptr<AudioEngine> m_engine;
    FfmpegAudioCodec m_codec;
    AudioRecorder m_recorder;
    PulseSoundPlayer m_player;
    SoundCue m_sounds{m_settings, m_player};

    std::unique_ptr<X11PasteQueue> m_pasteQueue; // none where there is no X11 session
    NoDesktopPaste m_noDesktop;
    TextInjector m_injector;
    X11Workspace m_workspace;
    SignIn m_signIn;
    X11EventTapFactory m_taps;
    AppDelegate m_delegate;
};

} // namespace velmora
