#pragma once

#include "core/level_source.h"
#include "foundation/main_loop.h"
#include "foundation/user_defaults.h"
#include "platform/audio_engine.h"

namespace velmora {

/// Listens to the chosen microphone without recording anything, so that the user can see whether it hears
/// them. The engine is its own: a dictation may run beside it.
class LevelTest : public LevelSource {
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    LevelTest(MainLoop& loop, const UserDefaults& defaults, AudioEngine& engine, QObject* parent = nullptr);
    ~LevelTest() override;

    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// Why nothing is heard, in the user's words; empty while all is well.
    [[nodiscard]] const QString& problem() const { return m_problem; }

    /// Opens the microphone, and again when another is chosen, until stop(). A microphone that can't be
    /// opened is a problem, not a failure.
    void start();
    /// Tries again after the devices have changed; does nothing unless it is running.
    void restart();
    /// Closes the microphone.
    void stop();

Q_SIGNALS:
    void isRunningChanged();
    void problemChanged();

private:
    void open();
    void close();
    void openOrExplain();
    void setRunning(bool running);
    void setProblem(const QString& problem);

    MainLoop& m_loop;
    const UserDefaults& m_defaults;
    AudioEngine& m_engine;
    bool m_isRunning = false;
    quint64 m_opening = 0; // counts; levels of an earlier one come too late
    QString m_problem;
};

} // namespace velmora
