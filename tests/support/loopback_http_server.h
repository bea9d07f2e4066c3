#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <deque>
#include <functional>

namespace velmora::test {

/// One connection to the loopback server: what came in, byte for byte, and the means to answer.
class LoopbackConnection : public QObject {
    Q_OBJECT

public:
    explicit LoopbackConnection(QTcpSocket* socket);

    /// The requests that have come in whole, head and body.
    [[nodiscard]] const std::vector<QByteArray>& requests() const { return m_requests; }
    /// Everything that has come in.
    [[nodiscard]] const QByteArray& received() const { return m_received; }
    [[nodiscard]] bool isOpen() const { return m_socket->state() == QAbstractSocket::ConnectedState; }

    /// Sends the bytes as they are, in a packet of their own.
    void write(const QByteArray& bytes);
    /// A whole reply with a Content-Length.
    void reply(const QByteArray& status, const QByteArray& body = {}, const QByteArray& headers = {});
    /// Closes after what has been written, and hears nothing more.
    void close() { m_socket->disconnectFromHost(); }
    /// Says that nothing more will come; isOpen() until the other side has noticed.
    void finish();

Q_SIGNALS:
    void requestArrived();

private:
    void onReadyRead();

    QTcpSocket* m_socket;
    QByteArray m_received;
    QByteArray m_unread; // the beginning of the next request
    std::vector<QByteArray> m_requests;
};

/// An HTTP server on this machine that does what the test says and nothing else.
class LoopbackHttpServer {
public:
    LoopbackHttpServer();

    [[nodiscard]] QUrl url(const QString& path = {}) const;
    [[nodiscard]] std::size_t connectionCount() const { return m_connections.size(); }
    [[nodiscard]] LoopbackConnection& connection(std::size_t index) { return *m_connections.at(index); }
    /// All whole requests of all connections, in the order of the connections.
    [[nodiscard]] std::vector<QByteArray> requests() const;

    /// Called with each whole request as it comes, on its connection.
    std::function<void(LoopbackConnection&, const QByteArray& request)> onRequest;

private:
    QTcpServer m_server;
    std::deque<std::unique_ptr<LoopbackConnection>> m_connections;
};

/// The body of a request that came in whole.
[[nodiscard]] QByteArray bodyOf(const QByteArray& request);
/// A header of it; empty when absent.
[[nodiscard]] QByteArray headerOf(const QByteArray& request, const QByteArray& name);

} // namespace velmora::test
