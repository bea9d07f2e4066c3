#pragma once

#include <QTcpServer>

namespace velmora::test {

/// A port of the loopback address that nobody listens on.
inline int freePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

} // namespace velmora::test
