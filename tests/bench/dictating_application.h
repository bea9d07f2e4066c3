#pragma once

#include "app/assembly/application.h"
#include "timed_audio_engine.h"

#include <QTemporaryDir>

namespace velmora::bench {

/// The running program's objects in this process, signed in to a backend on a loopback port, with the
/// times noted that can't be seen from outside.
class DictatingApplication {
public:
    explicit DictatingApplication(quint16 backendPort);

    /// Whether the hotkey works.
    [[nodiscard]] bool isReady() { return m_application.delegate().hotkey().isActive(); }
    /// The first buffer of the recording under way, if it has come.
    [[nodiscard]] std::optional<Clock::time_point> firstBuffer() const { return m_engine->firstBuffer(); }
    /// When the pipeline became idle, since the last call; none when it didn't.
    [[nodiscard]] std::optional<Clock::time_point> takeIdle() { return std::exchange(m_idle, std::nullopt); }
    /// The message of the last failure, if there was one.
    [[nodiscard]] const QString& failure() const { return m_failure; }

private:
    void noteState(const PipelineState& state);

    QTemporaryDir m_folder;
    TimedAudioEngine* m_engine = nullptr; // the application's
    Application m_application;

    std::optional<Clock::time_point> m_idle;
    QString m_failure;
};

} // namespace velmora::bench
