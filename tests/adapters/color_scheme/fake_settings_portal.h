#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>

namespace velmora::test {

/// The settings portal with one setting.
class FakeSettingsPortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakeSettingsPortal(QDBusConnection bus)
        : m_bus(std::move(bus)) {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }

    void change(const QString& group, const QString& key, uint value) {
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }
    void changeColorScheme(uint value) {
        colorScheme = value;
        change(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"), value);
    }

    uint colorScheme = 0;
    bool answers = true;
    int questions = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString& group, const QString& key) {
        ++questions;
        if (!answers)
            setDelayedReply(true);
        else if (group != QLatin1String("org.freedesktop.appearance") || key != QLatin1String("color-scheme"))
            sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), key);
        return QDBusVariant(QVariant::fromValue(QDBusVariant(colorScheme)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection m_bus;
};

} // namespace velmora::test
