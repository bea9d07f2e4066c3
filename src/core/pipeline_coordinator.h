#pragma once

#include "backend/account_session.h"
#include "backend/dictate_service.h"
#include "core/app_settings.h"
#include "core/audio_recorder.h"
#include "core/history_store.h"
#include "core/pipeline_state.h"
#include "core/sound_cue.h"
#include "core/text_injector.h"
#include "platform/workspace.h"

#include <QObject>

namespace velmora {

/// The dictation state machine. One start and one stop make one dictation: capture into a temporary file,
/// upload, text pasted piece by piece while the reply is streaming in, one history entry, the file deleted.
/// Every failure ends in an `Error` state that clears itself; what comes while something else is running is
/// dropped, never queued.
class PipelineCoordinator : public QObject {
    Q_OBJECT

public:
    using State = PipelineState;

    struct Neighbours {
        MainLoop& loop;
        AudioRecorder& recorder;
        const AppSettings& settings;
        HistoryStore& history;
        DictateService& dictation;
        AccountSession& account;
        TextInjector& injector;
        SoundCue& sounds;
        Workspace& workspace;
    };

    explicit PipelineCoordinator(const Neighbours& neighbours, QObject* parent = nullptr);

    [[nodiscard]] const State& state() const { return m_state; }
    /// The last finished dictation of this run.
    [[nodiscard]] const std::optional<HistoryItem>& lastResult() const { return m_lastResult; }
    [[nodiscard]] AudioRecorder& recorder() const { return m_recorder; }

    /// Does something only in `Idle`.
    void startRecording();
    /// Does something only while recording.
    void stopAndProcess();

Q_SIGNALS:
    void stateChanged(const velmora::PipelineState& state);
    void lastResultChanged();

private:
    struct Recording {
        QString path;
        double duration;             ///< seconds
        std::optional<QString> loss; ///< why some of it is missing
    };

    void startLegacyMode();
    void tick();
    void stopLegacyAndProcess();
    void finishLegacyRecording();
    Task<> askForMicrophone(std::stop_token stop);
    Task<> runLegacyPipeline(Recording recording, std::stop_token stop);
    /// Whether it came to its good end, with the file deleted.
    Task<bool> dictateAndPaste(Recording recording, std::stop_token stop);
    void complete(const Recording& recording, const QString& finalText,
                  const std::optional<QString>& streamed);
    void pasteResidual(const QString& finalText, const QString& streamed);
    void failEmpty();
    void fail(const QString& message);
    void setState(State state);

    MainLoop& m_loop;
    AudioRecorder& m_recorder;
    const AppSettings& m_settings;
    HistoryStore& m_history;
    DictateService& m_dictation;
    AccountSession& m_account;
    TextInjector& m_injector;
    SoundCue& m_sounds;
    Workspace& m_workspace;

    State m_state;
    std::optional<HistoryItem> m_lastResult;
    std::optional<MainLoop::TimePoint> m_recordingStartedAt;
    Timer m_elapsedTimer;
    TaskScope m_tasks; // last: what it stops may look at the rest
};

} // namespace velmora
