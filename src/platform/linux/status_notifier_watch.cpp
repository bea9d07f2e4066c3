#include "platform/linux/status_notifier_watch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace velmora {
namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString path = QStringLiteral("/StatusNotifierWatcher");

} // namespace

StatusNotifierWatch::StatusNotifierWatch(QObject* parent)
    : QObject(parent)
    , m_watcher(service, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusNotifierWatch::ask);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { set(false); });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus.connect(service, path, service, QLatin1String(signal), this, SLOT(ask()));
    if (bus.isConnected())
        ask();
    else
        m_isThere = false;
}

void StatusNotifierWatch::ask() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << service << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        set(reply.isValid() && reply.value().variant().toBool());
        answer->deleteLater();
    });
}

void StatusNotifierWatch::set(bool there) {
    if (std::exchange(m_isThere, there) != there)
        Q_EMIT changed();
}

} // namespace velmora
