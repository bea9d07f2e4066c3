#pragma once

#include <QRandomGenerator>
#include <QTcpServer>

namespace velmora::test {

/// A port of the loopback address that nobody listens on. The system gives it to nobody who asks for any, so
/// it stays free until it is used, and from one server to the next: those ports begin at 32768.
inline int freePort() {
    QTcpServer probe;
    while (!probe.listen(QHostAddress::LocalHost,
                         static_cast<quint16>(QRandomGenerator::system()->bounded(10'000, 32'768)))) {
    }
    return probe.serverPort();
}

} // namespace velmora::test
