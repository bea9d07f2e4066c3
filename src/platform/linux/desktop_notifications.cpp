#include "platform/linux/desktop_notifications.h"

#include "foundation/log.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace velmora {
namespace {

constexpr QLatin1String service("org.freedesktop.Notifications");
constexpr QLatin1String path("/org/freedesktop/Notifications");
constexpr QLatin1String actionKey("act");
constexpr int serversOwnTimeout = -1;

} // namespace

DesktopNotifications::DesktopNotifications(const QDBusConnection& bus)
    : m_bus(bus) {
    m_bus.connect(service, path, service, QStringLiteral("ActionInvoked"), this,
                  SLOT(actionInvoked(uint, QString)));
}

void DesktopNotifications::show(const Notification& notification) {
    m_action = notification.action;
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    call << QStringLiteral("Velmora") << m_shown << QStringLiteral("app.velmora.Velmora")
         << notification.title << notification.body << QStringList{actionKey, notification.actionLabel}
         << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("app.velmora.Velmora")}}
         << serversOwnTimeout;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (reply.isError())
            log(QStringLiteral("[Velmora] notification: ") + reply.error().message());
        else
            m_shown = reply.value();
    });
}

void DesktopNotifications::actionInvoked(uint id, const QString& key) {
    if (id == m_shown && key == actionKey && m_action)
        m_action();
}

} // namespace velmora
