#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

namespace velmora::test {

/// A program of ours under test; what it writes is kept. Ended with the object.
class Program {
public:
    Program(const QString& path, const QStringList& arguments,
            const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Everything written on both channels so far.
    [[nodiscard]] const QByteArray& output() const { return m_output; }
    /// Waits for a text in the output.
    [[nodiscard]] bool says(const QByteArray& text) const;
    [[nodiscard]] qint64 pid() const { return m_process.processId(); }
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Asks it to end as a session manager does; its exit status, or -1 when it had to be killed.
    int terminate();
    void kill();

private:
    QProcess m_process;
    QByteArray m_output;
};

} // namespace velmora::test
