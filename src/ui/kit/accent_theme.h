#pragma once

#include <QColor>
#include <QString>

namespace velmora {

/// The one colour that the user chooses.
enum class AccentTheme { Lime, Teal };

/// The stored form's accent; anything unknown is lime.
[[nodiscard]] inline AccentTheme accentThemeFromName(const QString& name) {
    return name == QLatin1String("teal") ? AccentTheme::Teal : AccentTheme::Lime;
}

[[nodiscard]] inline QColor accentColor(AccentTheme accent) {
    return accent == AccentTheme::Teal ? QColor(0x80CBC4) : QColor(0xA8CC5A);
}

} // namespace velmora
