#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace velmora::test {

/// A desktop's notification service, and the hand of its user.
class FakeNotificationService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Shown {
        uint replaces = 0;
        QString title;
        QString body;
        QStringList actions;
    };

    explicit FakeNotificationService(QDBusConnection bus)
        : m_bus(std::move(bus)) {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }

    void choose(uint id, const QString& action) { Q_EMIT ActionInvoked(id, action); }

    QList<Shown> shown; ///< the first one has the ID 1, unless it replaces another
    uint lastId = 0;

public Q_SLOTS:
    uint Notify(const QString& /*application*/, uint replaces, const QString& /*icon*/, const QString& title,
                const QString& body, const QStringList& actions, const QVariantMap& /*hints*/,
                int /*timeout*/) {
        shown.append({replaces, title, body, actions});
        return replaces != 0 ? replaces : ++lastId;
    }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString& key);

private:
    QDBusConnection m_bus;
};

} // namespace velmora::test
