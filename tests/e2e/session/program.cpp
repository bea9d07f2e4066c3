#include "e2e/session/program.h"

#include "support/desktop/wait_until.h"

namespace velmora::test {

Program::Program(const QString& path, const QStringList& arguments, const QProcessEnvironment& environment) {
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(&m_process, &QProcess::readyRead, [this] { m_output += m_process.readAll(); });
    m_process.start(path, arguments);
    m_process.waitForStarted();
}

Program::~Program() {
    if (isRunning())
        terminate();
}

bool Program::says(const QByteArray& text) const {
    return waitUntil([this, &text] { return m_output.contains(text); });
}

int Program::terminate() {
    m_process.terminate();
    if (!m_process.waitForFinished()) {
        kill();
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void Program::kill() {
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace velmora::test
