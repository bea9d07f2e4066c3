#pragma once

#include <QProcess>

namespace velmora::test {

/// An X server of the test's own, to be taken away from under a program.
class OwnServer {
public:
    OwnServer() { start({QStringLiteral("-displayfd"), QStringLiteral("1")}); }
    ~OwnServer() { stop(); }
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;

    [[nodiscard]] const QByteArray& display() const { return m_display; }
    void stop() {
        m_process.kill();
        m_process.waitForFinished();
    }
    /// Starts another under the same name.
    void startAgain() {
        start({QString::fromLatin1(m_display), QStringLiteral("-displayfd"), QStringLiteral("1")});
    }

private:
    void start(QStringList arguments) {
        arguments << QStringLiteral("-noreset") << QStringLiteral("-nolisten") << QStringLiteral("tcp");
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("Xvfb"), arguments);
        while (!m_process.canReadLine() && m_process.waitForReadyRead()) {
        }
        m_display = ":" + m_process.readLine().trimmed();
    }

    QProcess m_process;
    QByteArray m_display;
};

} // namespace velmora::test
