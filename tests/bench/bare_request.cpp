#include "bare_request.h"

#include "result.h"
#include "scripted_server.h"
#include "support/desktop/wait_until.h"

#include <QTcpSocket>
#include <QTimer>

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr auto pause = 20ms; // the event comes alone

} // namespace

BareRequest measureBareRequest(const QByteArray& request, std::chrono::milliseconds tail) {
    ScriptedServer server;
    server.setScript({{pause, "event: done\ndata: {}\n\n"}});
    BareRequest result;
    for (int run = 0; run < runs; ++run) {
        QTcpSocket socket;
        Clock::time_point read;
        QObject::connect(&socket, &QTcpSocket::connected, [&] { socket.write(request); });
        QObject::connect(&socket, &QTcpSocket::readyRead, [&] {
            read = Clock::now();
            socket.readAll();
        });
        const auto start = Clock::now();
        QTimer::singleShot(tail, Qt::PreciseTimer, &socket,
                           [&] { socket.connectToHost(QStringLiteral("127.0.0.1"), server.port()); });
        if (!test::waitUntil([&] { return socket.state() == QTcpSocket::UnconnectedState && read > start; }))
            throw NotMeasured(QStringLiteral("no answer to a plain socket"));
        const std::optional<ScriptedServer::Exchange> exchange = server.takeExchange();
        if (!exchange)
            throw NotMeasured(QStringLiteral("the server saw no request"));
        result.timerToFirstByte.add(milliseconds(start, exchange->firstByte));
        result.eventToClient.add(milliseconds(exchange->sent.front(), read));
    }
    return result;
}

} // namespace velmora::bench
