#include "core/relauncher.h"

#include "foundation/error.h"
#include "foundation/log.h"

namespace velmora {
namespace {

QString inSingleQuotes(QString text) {
    text.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString waitingFor(qint64 processId) {
    return QStringLiteral("while kill -0 %1 2>/dev/null; do sleep 0.1; done").arg(processId);
}

} // namespace

QString relaunchScript(const QString& executable, qint64 processId) {
    return waitingFor(processId) + QLatin1String("\nexec ") + inSingleQuotes(executable);
}

// The inner script takes the path as its $0, so no path needs quoting twice. Its errors stay where they are:
// the new process writes its log there.
QString delayedRelaunchScript(const QString& executable, qint64 processId) {
    return QLatin1String("nohup sh -c 'sleep 0.5 && ") + waitingFor(processId) +
           QLatin1String("; exec \"$0\"' ") + inSingleQuotes(executable) + QLatin1String(" >/dev/null &");
}

Relauncher::Relauncher(Neighbours neighbours)
    : m_neighbours(std::move(neighbours)) {}

bool Relauncher::relaunch() {
    try {
        runShell(relaunchScript(m_neighbours.executable, m_neighbours.processId));
    } catch (const Error& error) {
        log(QStringLiteral("[Velmora] relaunch: failed to spawn helper: ") + error.localizedDescription());
        return false;
    }
    leave();
    return true;
}

void Relauncher::relaunchWithDelay() {
    try {
        runShell(delayedRelaunchScript(m_neighbours.executable, m_neighbours.processId));
    } catch (const Error&) {
        // the user asked for an end of this process at least
    }
    leave();
}

void Relauncher::runShell(const QString& script) {
    m_neighbours.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
}

// After what is under way: the window that closes may be the one whose button was pressed.
void Relauncher::leave() {
    m_neighbours.loop.post([dismissModalUIThen = m_neighbours.dismissModalUIThen,
                            terminate = m_neighbours.terminate] { dismissModalUIThen(terminate); });
}

} // namespace velmora
