#include "core/pipeline_coordinator.h"

#include "core/grapheme_text.h"
#include "foundation/error.h"
#include "foundation/log.h"

#include <QFile>
#include <QPointer>

using namespace std::chrono_literals;

namespace velmora {
namespace {

constexpr auto elapsedInterval = 100ms;
constexpr auto recordingTail = 150ms; // what is said while the key goes up belongs to the recording
constexpr auto errorDisplayTime = 6s;

const QString microphoneDenied =
    QStringLiteral("Нет доступа к микрофону. Разрешите его в Системных настройках.");

} // namespace

PipelineCoordinator::PipelineCoordinator(const Neighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_loop(neighbours.loop)
    , m_recorder(neighbours.recorder)
    , m_settings(neighbours.settings)
    , m_history(neighbours.history)
    , m_dictation(neighbours.dictation)
    , m_account(neighbours.account)
    , m_injector(neighbours.injector)
    , m_sounds(neighbours.sounds)
    , m_workspace(neighbours.workspace)
    , m_state(pipeline_state::Idle{}) {}

void PipelineCoordinator::startRecording() {
    if (!std::holds_alternative<pipeline_state::Idle>(m_state))
        return;
    switch (m_recorder.authorization()) {
    case MicrophoneAuthorization::Restricted:
    case MicrophoneAuthorization::Denied:
        fail(microphoneDenied);
        return;
    case MicrophoneAuthorization::NotDetermined:
        m_tasks.start(QStringLiteral("microphone access"), askForMicrophone(m_tasks.token()));
        return;
    case MicrophoneAuthorization::Authorized:
        startLegacyMode();
    }
}

// The answer doesn't start the recording: by then the user has let go of the key.
Task<> PipelineCoordinator::askForMicrophone(std::stop_token stop) {
    const bool granted = co_await m_recorder.requestAccess();
    if (stop.stop_requested())
        co_return;
    if (granted)
        m_recorder.prewarm();
    fail(granted ? QStringLiteral("Доступ к микрофону выдан — нажмите ещё раз") : microphoneDenied);
}

void PipelineCoordinator::startLegacyMode() {
    try {
        m_recorder.start();
    } catch (const Error& error) {
        fail(QStringLiteral("Не удалось начать запись: ") + error.localizedDescription());
        return;
    }
    m_sounds.playRecordStart();
    m_recordingStartedAt = m_loop.now();
    // The token is fresh by the time of the upload; nothing waits for it here.
    m_tasks.start(QStringLiteral("token warm-up"), m_account.ensureFreshToken());
    setState(pipeline_state::Recording{0});
    m_elapsedTimer = m_loop.every(elapsedInterval, [this] {
        m_loop.post([self = QPointer(this)] {
            if (self)
                self->tick();
        });
    });
}

void PipelineCoordinator::tick() {
    if (m_recordingStartedAt)
        setState(pipeline_state::Recording{
            std::chrono::duration<double>(m_loop.now() - *m_recordingStartedAt).count()});
}

void PipelineCoordinator::stopAndProcess() {
    if (std::holds_alternative<pipeline_state::Recording>(m_state)) {
        stopLegacyAndProcess();
    } else if (std::holds_alternative<pipeline_state::StreamingRecording>(m_state)) {
        m_recorder.stop();
        m_recorder.onPcmChunk = nullptr;
        m_elapsedTimer.invalidate();
    }
}

void PipelineCoordinator::stopLegacyAndProcess() {
    m_elapsedTimer.invalidate();
    m_loop.delay(recordingTail, [self = QPointer(this)] {
        if (self)
            self->finishLegacyRecording();
    });
}

void PipelineCoordinator::finishLegacyRecording() {
    if (!m_recorder.isRecording())
        return;
    m_recorder.stop();
    if (!m_recorder.lastFileURL()) {
        fail(QStringLiteral("Запись не удалась. Проверьте доступ к микрофону."));
        return;
    }
    const QString path = *m_recorder.lastFileURL();
    if (m_recorder.lastDuration() < m_settings.minDuration()) {
        QFile::remove(path);
        fail(QStringLiteral("Слишком коротко — удерживайте клавишу дольше"));
        return;
    }
    const std::optional<QString>& loss = m_recorder.lastLoss();
    if (loss && !QFile::exists(path)) {
        fail(QStringLiteral("Запись не сохранена: ") + *loss);
        return;
    }
    m_tasks.start(QStringLiteral("dictation"),
                  runLegacyPipeline({path, m_recorder.lastDuration(), loss}, m_tasks.token()));
}

Task<> PipelineCoordinator::runLegacyPipeline(Recording recording, std::stop_token stop) {
    bool completed = false;
    try {
        completed = co_await dictateAndPaste(recording, stop);
    } catch (...) {
        // An open paste session stays open: the user's clipboard is kept for the next dictation that
        // succeeds.
        if (!stop.stop_requested())
            fail(QStringLiteral("Ошибка: ") + describe(std::current_exception()));
    }
    if (!completed)
        QFile::remove(recording.path);
}

Task<bool> PipelineCoordinator::dictateAndPaste(Recording recording, std::stop_token stop) {
    if (!m_account.isLoggedIn()) {
        fail(QStringLiteral("Войдите в аккаунт в настройках"));
        co_return false;
    }
    co_await m_account.ensureFreshToken();
    if (stop.stop_requested())
        co_return false;
    setState(pipeline_state::Transcribing{});

    std::optional<QString> streamed; // what is pasted already; absent until the first piece
    QString finalText;
    AsyncStream<DictateEvent> events = m_dictation.dictate(recording.path);
    while (const std::optional<DictateEvent> event = co_await events.next()) {
        if (stop.stop_requested())
            co_return false;
        if (const auto* status = std::get_if<dictate_event::Status>(&*event)) {
            if (status->stage == QLatin1String("cleaning"))
                setState(pipeline_state::Cleaning{});
        } else if (const auto* chunk = std::get_if<dictate_event::Chunk>(&*event)) {
            setState(pipeline_state::Cleaning{});
            if (!streamed)
                m_injector.startIncrementalSession();
            m_injector.pasteIncremental(chunk->delta);
            streamed = streamed.value_or(QString()) + chunk->delta;
        } else if (const auto* done = std::get_if<dictate_event::Done>(&*event)) {
            finalText = done->text;
        } else if (const auto* error = std::get_if<dictate_event::Error>(&*event)) {
            throw PlainError(error->code + QStringLiteral(": ") + error->message);
        }
    }
    if (stop.stop_requested())
        co_return false;
    if (finalText.isEmpty()) {
        failEmpty();
        co_return false;
    }
    complete(recording, finalText, streamed);
    co_return true;
}

void PipelineCoordinator::complete(const Recording& recording, const QString& finalText,
                                   const std::optional<QString>& streamed) {
    const RunningApplication frontApp = m_workspace.frontmostApplication().value_or(RunningApplication{});
    if (streamed) {
        pasteResidual(finalText, *streamed);
        m_injector.finishIncrementalSession();
    } else {
        m_injector.paste(finalText);
    }
    m_sounds.playTranscriptionReady();
    const HistoryItem item{.date = m_loop.date(),
                           .durationSec = recording.duration,
                           .rawText = finalText,
                           .cleanedText = finalText,
                           .appName = frontApp.localizedName,
                           .appBundleId = frontApp.bundleIdentifier};
    m_history.add(item);
    m_lastResult = item;
    Q_EMIT lastResultChanged();
    QFile::remove(recording.path);
    if (recording.loss)
        fail(QStringLiteral("Записано не всё: ") + *recording.loss);
    else
        setState(pipeline_state::Idle{});
    m_tasks.start(QStringLiteral("account refresh"), m_account.refreshMe());
}

// Pasted text is never taken back, so only an extension of it can still be added.
void PipelineCoordinator::pasteResidual(const QString& finalText, const QString& streamed) {
    const std::optional<QString> residual = textBeyondPrefix(finalText, streamed);
    if (!residual)
        log(QStringLiteral("Velmora: dictate done diverged from streamed text — skipping residual"));
    else if (!residual->isEmpty())
        m_injector.pasteIncremental(*residual);
}

void PipelineCoordinator::failEmpty() {
    fail(m_recorder.authorization() == MicrophoneAuthorization::Authorized
             ? QStringLiteral("Пустой ответ от сервера. Попробуйте ещё раз.")
             : microphoneDenied);
}

void PipelineCoordinator::fail(const QString& message) {
    setState(pipeline_state::Error{message});
    // Not cancelled by anything: the reset of one error also ends the next that follows it closely.
    m_loop.delay(errorDisplayTime, [self = QPointer(this)] {
        if (self && std::holds_alternative<pipeline_state::Error>(self->m_state))
            self->setState(pipeline_state::Idle{});
    });
}

void PipelineCoordinator::setState(State state) {
    if (m_state == state)
        return;
    m_state = std::move(state);
    Q_EMIT stateChanged(m_state);
}

} // namespace velmora
