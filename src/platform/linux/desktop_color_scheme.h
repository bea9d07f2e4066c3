#pragma once

#include "platform/color_scheme.h"

#include <QDBusConnection>

#include <optional>

class QDBusVariant;

namespace velmora {

/// What the desktop's settings portal says, live. Until it has answered, and where there is none or it has no
/// preference, the palette that the platform gives to Qt decides. Nothing here waits for the portal.
class DesktopColorScheme final : public ColorScheme {
    Q_OBJECT

public:
    explicit DesktopColorScheme(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                                QObject* parent = nullptr);

    [[nodiscard]] bool isDark() const override { return m_isDark; }

protected:
    /// Of the application: its palette changes.
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void askPortal();
    void takePreference(const QVariant& value);
    void update();

    QDBusConnection m_bus;
    std::optional<bool> m_prefersDark; // none when the portal has no preference
    bool m_isDark = false;
};

} // namespace velmora
