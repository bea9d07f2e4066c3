#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

namespace velmora::test {

/// A message bus of the test's own, which starts no service of the machine's.
class PrivateBus {
public:
    PrivateBus() {
        QFile config(m_folder.filePath(QStringLiteral("bus.conf")));
        if (config.open(QIODevice::WriteOnly))
            config.write("<busconfig><type>session</type><listen>unix:dir=" + m_folder.path().toUtf8() +
                         "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
                         "<allow send_destination=\"*\"/><allow eavesdrop=\"true\"/><allow "
                         "own=\"*\"/></policy></busconfig>");
        config.close();
        m_process.start(QStringLiteral("dbus-daemon"),
                        {QStringLiteral("--config-file=") + config.fileName(), QStringLiteral("--nofork"),
                         QStringLiteral("--print-address")});
        while (!m_process.canReadLine() && m_process.waitForReadyRead()) {
        }
        m_address = QString::fromUtf8(m_process.readLine().trimmed());
    }
    ~PrivateBus() {
        for (const QString& name : std::as_const(m_connections))
            QDBusConnection::disconnectFromBus(name);
        m_process.kill();
        m_process.waitForFinished();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    QDBusConnection connect(const QString& name) {
        m_connections.append(name);
        return QDBusConnection::connectToBus(m_address, name);
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_address;
    QStringList m_connections;
};

} // namespace velmora::test
