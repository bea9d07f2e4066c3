#pragma once

#include "app/app_delegate.h"
#include "backend/auth_session.h"
#include "backend/backend_dictate_client.h"
#include "backend/qt_http_transport.h"
#include "backend/sign_in.h"
#include "foundation/qt_main_loop.h"
#include "platform/linux/ffmpeg_audio_codec.h"
#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_sound_player.h"
#include "platform/linux/x11_event_tap_factory.h"
#include "platform/linux/x11_paste_queue.h"
#include "platform/linux/x11_workspace.h"
#include "timed_audio_engine.h"

#include <QTemporaryDir>

namespace velmora::bench {

/// The objects of the running program in this process, signed in to a backend on a loopback port, with the
/// times noted that can't be seen from outside.
class DictatingApplication {
public:
    explicit DictatingApplication(quint16 backendPort);

    /// Whether the hotkey works.
    [[nodiscard]] bool isReady() const { return m_delegate.hotkey().isActive(); }
    /// The first buffer of the recording under way, if it has come.
    [[nodiscard]] std::optional<Clock::time_point> firstBuffer() const { return m_engine.firstBuffer(); }
    /// When the pipeline became idle, since the last call; none when it didn't.
    [[nodiscard]] std::optional<Clock::time_point> takeIdle() { return std::exchange(m_idle, std::nullopt); }
    /// The message of the last failure, if there was one.
    [[nodiscard]] const QString& failure() const { return m_failure; }

private:
    void noteState(const PipelineState& state);

    QTemporaryDir m_folder;
    QtMainLoop m_loop;
    UserDefaults m_defaults;
    AppSettings m_settings{m_defaults};
    HistoryStore m_history;

    AuthStore m_authStore;
    QtHttpTransport m_transport{m_loop};
    AuthSession m_session;
    BackendDictateClient m_dictation{m_transport, m_session};

    PulseConnection m_pulse;
    PulseAudioEngine m_pulseEngine{m_pulse};
    TimedAudioEngine m_engine{m_pulseEngine};
    FfmpegAudioCodec m_codec;
    AudioRecorder m_recorder;
    PulseSoundPlayer m_player;
    SoundCue m_sounds{m_settings, m_player};

    std::unique_ptr<X11PasteQueue> m_pasteQueue;
    TextInjector m_injector;
    X11Workspace m_workspace;
    SignIn m_signIn;
    X11EventTapFactory m_taps;
    AppDelegate m_delegate;

    std::optional<Clock::time_point> m_idle;
    QString m_failure;
};

} // namespace velmora::bench
