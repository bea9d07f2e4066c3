#pragma once

#include "platform/notifications.h"

#include <QDBusConnection>
#include <QObject>

namespace velmora {

/// The notification service of the session bus.
class DesktopNotifications final : public QObject, public Notifications {
    Q_OBJECT

public:
    explicit DesktopNotifications(const QDBusConnection& bus = QDBusConnection::sessionBus());

    void show(const Notification& notification) override;

private Q_SLOTS:
    void actionInvoked(uint id, const QString& key);

private:
    QDBusConnection m_bus;
    uint m_shown = 0; // 0: none
    std::function<void()> m_action;
};

} // namespace velmora
