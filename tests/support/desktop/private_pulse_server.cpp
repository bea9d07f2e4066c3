#include "support/desktop/private_pulse_server.h"

#include <QTest>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <stdexcept>

namespace velmora::test {
namespace {

constexpr int deadline = 20'000; // ms

QByteArray runPactl(const QStringList& arguments) {
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), arguments);
    if (!pactl.waitForFinished(deadline) || pactl.exitCode() != 0)
        throw std::runtime_error("pactl " + arguments.join(u' ').toStdString() + ": " +
                                 pactl.readAllStandardError().toStdString());
    return pactl.readAllStandardOutput().trimmed();
}

} // namespace

PrivatePulseServer::PrivatePulseServer() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "PULSE_RUNTIME_PATH"})
        environment.insert(QString::fromLatin1(variable), m_folder.path());
    for (const char* variable : {"PULSE_SERVER", "DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        environment.remove(QString::fromLatin1(variable));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // It must not outlive a test that crashes.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    start();
}

PrivatePulseServer::~PrivatePulseServer() {
    kill();
}

void PrivatePulseServer::start() {
    QFile::remove(QString::fromLocal8Bit(socketPath()));
    const QString protocol =
        QStringLiteral("module-native-protocol-unix auth-anonymous=1 auth-cookie-enabled=0 socket=%1")
            .arg(QString::fromLocal8Bit(socketPath()));
    m_process.start(QStringLiteral("pulseaudio"),
                    {QStringLiteral("-n"), QStringLiteral("--daemonize=no"),
                     QStringLiteral("--use-pid-file=no"), QStringLiteral("--exit-idle-time=-1"),
                     QStringLiteral("--high-priority=no"), QStringLiteral("--realtime=no"),
                     QStringLiteral("--log-level=error"), QStringLiteral("-L"), protocol});
    if (!m_process.waitForStarted(deadline) || !QTest::qWaitFor([this] { return accepts(); }, deadline))
        throw std::runtime_error("pulseaudio did not start");
}

void PrivatePulseServer::kill() {
    m_process.kill();
    m_process.waitForFinished(deadline);
}

void PrivatePulseServer::freeze() {
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}

void PrivatePulseServer::thaw() {
    ::kill(pid_t(m_process.processId()), SIGCONT);
}

QByteArray PrivatePulseServer::pactl(const QStringList& arguments) const {
    return runPactl(QStringList{QStringLiteral("-s"), QString::fromLocal8Bit(address())} + arguments);
}

QByteArray PrivatePulseServer::loadModule(const QString& nameAndArguments) const {
    return pactl(QStringList{QStringLiteral("load-module")} + nameAndArguments.split(u' '));
}

void PrivatePulseServer::unloadModule(const QByteArray& index) const {
    pactl({QStringLiteral("unload-module"), QString::fromLatin1(index)});
}

QByteArray PrivatePulseServer::loadHummingMicrophone(const QString& name, int frequency,
                                                     int sampleRate) const {
    loadModule(
        QStringLiteral("module-null-sink sink_name=%1_feed norewinds=1 rate=%2 channels=1 channel_map=mono")
            .arg(name)
            .arg(sampleRate));
    loadModule(QStringLiteral("module-sine sink=%1_feed frequency=%2 rate=%3")
                   .arg(name)
                   .arg(frequency)
                   .arg(sampleRate));
    return plugInAgain(name);
}

QByteArray PrivatePulseServer::plugInAgain(const QString& name) const {
    return loadModule(QStringLiteral("module-remap-source source_name=%1 master=%1_feed.monitor "
                                     "source_properties=device.description=%1-description")
                          .arg(name));
}

int PrivatePulseServer::recordingClients() const {
    // The devices loaded above record from each other as well.
    return int(pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("source-outputs")})
                   .count("protocol-native"));
}

bool PrivatePulseServer::accepts() const {
    sockaddr_un socketAddress{};
    socketAddress.sun_family = AF_UNIX;
    const QByteArray path = socketPath();
    std::memcpy(socketAddress.sun_path, path.constData(),
                std::min(std::size_t(path.size()), sizeof(socketAddress.sun_path) - 1));
    const int probe = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool accepted =
        ::connect(probe, reinterpret_cast<const sockaddr*>(&socketAddress), sizeof(socketAddress)) == 0;
    ::close(probe);
    return accepted;
}

QByteArray desktopPactl(const QStringList& arguments) {
    return runPactl(arguments);
}

} // namespace velmora::test
