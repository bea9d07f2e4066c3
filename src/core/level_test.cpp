#include "core/level_test.h"

#include "core/chosen_input.h"
#include "core/level_meter.h"

#include <QPointer>

namespace velmora {

LevelTest::LevelTest(MainLoop& loop, const UserDefaults& defaults, AudioEngine& engine, QObject* parent)
    : LevelSource(parent)
    , m_loop(loop)
    , m_defaults(defaults)
    , m_engine(engine) {
    connect(&defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == QLatin1String("micUniqueID"))
            restart();
    });
}

LevelTest::~LevelTest() {
    m_engine.removeTap();
    m_engine.stop();
}

void LevelTest::start() {
    if (m_isRunning)
        return;
    setRunning(true);
    openOrExplain();
}

void LevelTest::restart() {
    if (!m_isRunning)
        return;
    close();
    openOrExplain();
}

void LevelTest::stop() {
    if (!m_isRunning)
        return;
    close();
    setProblem({});
    setRunning(false);
}

void LevelTest::openOrExplain() {
    try {
        open();
        setProblem({});
    } catch (const Error& error) {
        m_engine.removeTap();
        setProblem(error.localizedDescription());
    }
}

void LevelTest::open() {
    if (m_engine.authorization() != MicrophoneAuthorization::Authorized)
        throw AudioDeviceError(AudioDeviceError::MicNotAuthorized{});
    useChosenInput(m_engine, m_defaults);
    ++m_opening;
    m_engine.installTap([this, opening = m_opening](const AudioBuffer& buffer) {
        m_loop.post([self = QPointer(this), opening, level = levelOf(buffer)] {
            if (self && self->m_isRunning && self->m_opening == opening)
                self->publishLevel(level);
        });
    });
    m_engine.start();
}

void LevelTest::close() {
    m_engine.removeTap();
    m_engine.stop();
    ++m_opening;
    clearLevels();
}

void LevelTest::setRunning(bool running) {
    m_isRunning = running;
    Q_EMIT isRunningChanged();
}

void LevelTest::setProblem(const QString& problem) {
    if (problem == m_problem)
        return;
    m_problem = problem;
    Q_EMIT problemChanged();
}

} // namespace velmora
