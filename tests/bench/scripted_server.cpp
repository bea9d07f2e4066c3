#include "scripted_server.h"

#include "result.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velmora::bench {
namespace {

constexpr int lookInterval = 50; // ms between looks at the stop token

bool waitReadable(const std::stop_token& stop, int socket) {
    pollfd descriptor{.fd = socket, .events = POLLIN, .revents = 0};
    while (!stop.stop_requested()) {
        if (::poll(&descriptor, 1, lookInterval) > 0)
            return true;
    }
    return false;
}

void sendAll(int socket, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t count = ::send(socket, bytes.data(), std::size_t(bytes.size()), MSG_NOSIGNAL);
        if (count <= 0)
            return;
        bytes = bytes.sliced(count);
    }
}

/// The length of the request at the beginning of `bytes`, 0 while its head isn't complete.
qsizetype requestLength(const QByteArray& bytes) {
    const qsizetype head = bytes.indexOf("\r\n\r\n");
    if (head < 0)
        return 0;
    const qsizetype field = bytes.left(head).toLower().indexOf("\r\ncontent-length:");
    const qsizetype body =
        field < 0
            ? 0
            : bytes.mid(field + 17, bytes.indexOf("\r\n", field + 2) - field - 17).trimmed().toLongLong();
    return head + 4 + body;
}

} // namespace

ScriptedServer::ScriptedServer() {
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(m_listener, generic, length) != 0 || ::listen(m_listener, 16) != 0 ||
        ::getsockname(m_listener, generic, &length) != 0)
        throw NotMeasured(QStringLiteral("no loopback port to listen on"));
    m_port = ntohs(address.sin_port);
    m_thread = std::jthread([this](const std::stop_token& stop) { acceptAll(stop); });
}

ScriptedServer::~ScriptedServer() {
    m_thread = {};
    ::close(m_listener);
}

void ScriptedServer::setScript(std::vector<Step> script) {
    const std::lock_guard lock(m_mutex);
    m_script = std::move(script);
    m_exchange.reset();
}

std::optional<ScriptedServer::Exchange> ScriptedServer::takeExchange() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_exchange, std::nullopt);
}

void ScriptedServer::acceptAll(const std::stop_token& stop) {
    std::vector<std::jthread> connections;
    while (waitReadable(stop, m_listener)) {
        const int connection = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection >= 0)
            connections.emplace_back(
                [this, connection](const std::stop_token& own) { serve(own, connection); });
    }
}

void ScriptedServer::serve(const std::stop_token& stop, int connection) {
    const int on = 1;
    ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
    std::array<char, 64 * 1024> buffer{};
    Exchange exchange;
    while (waitReadable(stop, connection)) {
        const ssize_t count = ::recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            break;
        if (exchange.request.isEmpty())
            exchange.firstByte = Clock::now();
        exchange.request.append(buffer.data(), count);
        const qsizetype length = requestLength(exchange.request);
        if (length == 0 || exchange.request.size() < length)
            continue;
        if (exchange.request.startsWith("POST /v1/dictate ")) {
            answer(connection, std::move(exchange));
            break;
        }
        sendAll(connection, "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
        exchange = {};
    }
    ::close(connection);
}

void ScriptedServer::answer(int connection, Exchange exchange) {
    std::vector<Step> script;
    {
        const std::lock_guard lock(m_mutex);
        script = m_script;
    }
    sendAll(connection, "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nConnection: close\r\n\r\n");
    for (const Step& step : script) {
        std::this_thread::sleep_for(step.pause); // the pace that the script asks for
        exchange.sent.push_back(Clock::now());
        sendAll(connection, step.bytes);
    }
    const std::lock_guard lock(m_mutex);
    m_exchange = std::move(exchange);
}

} // namespace velmora::bench
