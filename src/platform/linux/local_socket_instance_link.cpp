#include "platform/linux/local_socket_instance_link.h"

#include "platform/linux/instance_action.h"

#include <QLocalSocket>
#include <QStandardPaths>
#include <QUrl>

namespace velmora {
namespace {

constexpr int timeoutMs = 2000;
const QByteArray done = "ok\n";

QByteArray lineOf(const InstanceCommand& command) {
    if (const auto* open = std::get_if<instance_command::OpenURL>(&command))
        return "open " + QUrl::toPercentEncoding(open->url) + '\n';
    const QString action = actionOf(command);
    return (action.isEmpty() ? QByteArray("activate") : action.toUtf8()) + '\n';
}

std::optional<InstanceCommand> commandOf(const QByteArray& line) {
    if (line.startsWith("open "))
        return instance_command::OpenURL{QUrl::fromPercentEncoding(line.mid(5))};
    if (line == "activate")
        return instance_command::Activate{};
    return commandOfAction(QString::fromUtf8(line));
}

} // namespace

LocalSocketInstanceLink::LocalSocketInstanceLink(QString path)
    : m_path(std::move(path))
    , m_lock(m_path + QStringLiteral(".lock")) {
    m_lock.setStaleLockTime(0); // it is the living process that counts, not its age
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
        while (QLocalSocket* connection = m_server.nextPendingConnection())
            serve(connection);
    });
}

QString LocalSocketInstanceLink::defaultPath() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return folder + QStringLiteral("/velmora.socket");
}

bool LocalSocketInstanceLink::claim(Handler handler) {
    if (!m_lock.tryLock(0))
        return false;
    m_handler = std::move(handler);
    QLocalServer::removeServer(m_path); // what a killed instance has left
    return m_server.listen(m_path);
}

void LocalSocketInstanceLink::serve(QLocalSocket* connection) {
    QObject::connect(connection, &QLocalSocket::disconnected, connection, &QObject::deleteLater);
    QObject::connect(connection, &QLocalSocket::readyRead, connection, [this, connection] {
        while (connection->canReadLine()) {
            const QByteArray line = connection->readLine().chopped(1);
            if (const std::optional<InstanceCommand> command = commandOf(line))
                m_handler(*command);
            connection->write(done);
        }
    });
}

bool LocalSocketInstanceLink::send(const InstanceCommand& command) {
    QLocalSocket connection;
    connection.connectToServer(m_path);
    if (!connection.waitForConnected(timeoutMs))
        return false;
    connection.write(lineOf(command));
    return connection.waitForReadyRead(timeoutMs) && connection.readAll() == done;
}

} // namespace velmora
