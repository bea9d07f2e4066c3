#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace velmora::test {

/// A sound server of the test's own, which it may kill, hang and start again. It has no device until one is
/// loaded.
class PrivatePulseServer {
public:
    /// Runs when the constructor returns; throws std::runtime_error when it doesn't come up.
    PrivatePulseServer();
    ~PrivatePulseServer();

    /// What a client connects to.
    [[nodiscard]] QByteArray address() const { return "unix:" + socketPath(); }

    void start();
    /// As a crash would end it.
    void kill();
    /// Makes it hang, and lets it go on.
    void freeze();
    void thaw();

    /// Runs pactl on this server and returns what it prints.
    QByteArray pactl(const QStringList& arguments) const;
    /// Returns the module's index.
    QByteArray loadModule(const QString& nameAndArguments) const;
    void unloadModule(const QByteArray& index) const;

    /// A microphone into which somebody hums a tone of amplitude 0.5 without end. Returns what to unload to
    /// unplug it.
    QByteArray loadHummingMicrophone(const QString& name, int frequency, int sampleRate = 48'000) const;
    /// Brings an unplugged microphone back; returns the same.
    QByteArray plugInAgain(const QString& name) const;

    /// How many streams of clients record.
    [[nodiscard]] int recordingClients() const;

private:
    [[nodiscard]] QByteArray socketPath() const {
        return m_folder.filePath(QStringLiteral("native")).toLocal8Bit();
    }
    [[nodiscard]] bool accepts() const;

    QTemporaryDir m_folder;
    QProcess m_process;
};

/// Runs pactl on the server of the desktop.
QByteArray desktopPactl(const QStringList& arguments);

} // namespace velmora::test
