#include "platform/linux/desktop_color_scheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace velmora {
namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String interface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String colorScheme("color-scheme");

// The portal's numbers; any other stands for no preference.
constexpr uint dark = 1;
constexpr uint light = 2;

bool isPaletteDark() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

DesktopColorScheme::DesktopColorScheme(const QDBusConnection& bus, QObject* parent)
    : ColorScheme(parent)
    , m_bus(bus)
    , m_isDark(isPaletteDark()) {
    qGuiApp->installEventFilter(this);
    // A change between the answer and the subscription would be lost, so this comes first.
    m_bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    askPortal();
}

void DesktopColorScheme::askPortal() {
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    question << QString(appearance) << QString(colorScheme);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError())
            takePreference(reply.value().variant());
    });
}

void DesktopColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == appearance && key == colorScheme)
        takePreference(value.variant());
}

// The answer to the question is wrapped once more than the value of a change.
void DesktopColorScheme::takePreference(const QVariant& value) {
    const QVariant inner = value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    const uint preference = inner.toUInt();
    m_prefersDark =
        preference == dark || preference == light ? std::optional(preference == dark) : std::nullopt;
    update();
}

bool DesktopColorScheme::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange)
        update();
    return ColorScheme::eventFilter(watched, event);
}

void DesktopColorScheme::update() {
    const bool isDark = m_prefersDark.value_or(isPaletteDark());
    if (std::exchange(m_isDark, isDark) != isDark)
        Q_EMIT changed();
}

} // namespace velmora
