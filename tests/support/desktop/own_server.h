#pragma once

#include <QCoreApplication>
#include <QProcess>

namespace velmora::test {

/// An X server of the test's own, to be taken away from under a program.
class OwnServer {
public:
    OwnServer() { start(); }
    ~OwnServer() { stop(); }
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;

    [[nodiscard]] const QByteArray& display() const { return m_display; }
    void stop() {
        m_process.kill();
        m_process.waitForFinished();
    }
    /// Starts another under the same name.
    void startAgain() { start(); }

private:
    // The desktops of other tests take the lowest numbers that are free, and must not take this one
    // meanwhile.
    static QByteArray ownName() {
        static int servers = 0;
        return ":" + QByteArray::number(1000 + QCoreApplication::applicationPid() % 30000 + servers++);
    }

    void start() {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("Xvfb"),
                        {QString::fromLatin1(m_display), QStringLiteral("-displayfd"), QStringLiteral("1"),
                         QStringLiteral("-noreset"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
        while (!m_process.canReadLine() && m_process.waitForReadyRead()) {
        }
        m_process.readLine(); // it is ready
    }

    QProcess m_process;
    const QByteArray m_display = ownName();
};

} // namespace velmora::test
