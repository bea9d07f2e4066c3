#include "support/loopback_http_server.h"

#include <sys/socket.h>

namespace velmora::test {
namespace {

constexpr char headEnd[] = "\r\n\r\n";

} // namespace

LoopbackConnection::LoopbackConnection(QTcpSocket* socket)
    : m_socket(socket) {
    socket->setParent(this);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket, &QTcpSocket::readyRead, this, &LoopbackConnection::onReadyRead);
}

void LoopbackConnection::onReadyRead() {
    const QByteArray bytes = m_socket->readAll();
    m_received += bytes;
    m_unread += bytes;
    while (true) {
        const qsizetype head = m_unread.indexOf(headEnd);
        if (head < 0)
            return;
        const qsizetype size = head + 4 + headerOf(m_unread, "Content-Length").toLongLong();
        if (m_unread.size() < size)
            return;
        m_requests.push_back(m_unread.left(size));
        m_unread.remove(0, size);
        Q_EMIT requestArrived();
    }
}

void LoopbackConnection::write(const QByteArray& bytes) {
    m_socket->write(bytes);
    m_socket->flush();
}

void LoopbackConnection::finish() {
    ::shutdown(static_cast<int>(m_socket->socketDescriptor()), SHUT_WR);
}

void LoopbackConnection::reply(const QByteArray& status, const QByteArray& body, const QByteArray& headers) {
    write("HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + headers +
          "\r\n" + body);
}

LoopbackHttpServer::LoopbackHttpServer() {
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            LoopbackConnection* connection =
                m_connections.emplace_back(std::make_unique<LoopbackConnection>(socket)).get();
            QObject::connect(connection, &LoopbackConnection::requestArrived, connection, [this, connection] {
                if (onRequest)
                    onRequest(*connection, connection->requests().back());
            });
        }
    });
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("no loopback port: %s", qPrintable(m_server.errorString()));
}

QUrl LoopbackHttpServer::url(const QString& path) const {
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
}

std::vector<QByteArray> LoopbackHttpServer::requests() const {
    std::vector<QByteArray> all;
    for (const auto& connection : m_connections)
        all.insert(all.end(), connection->requests().begin(), connection->requests().end());
    return all;
}

QByteArray bodyOf(const QByteArray& request) {
    return request.mid(request.indexOf(headEnd) + 4);
}

QByteArray headerOf(const QByteArray& request, const QByteArray& name) {
    const QByteArray head = request.left(request.indexOf(headEnd));
    const QByteArray mark = "\r\n" + name.toLower() + ":";
    const qsizetype start = head.toLower().indexOf(mark);
    if (start < 0)
        return {};
    const qsizetype end = head.indexOf("\r\n", start + mark.size());
    return head.mid(start + mark.size(), end < 0 ? -1 : end - start - mark.size()).trimmed();
}

} // namespace velmora::test
