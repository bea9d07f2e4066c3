#include "core/hotkey_label.h"

#include "core/app_settings.h"

namespace velmora {
namespace {

const QString fnLabel = QStringLiteral("Fn");

} // namespace

QString hotkeyName(const QString& hotkey) {
    if (hotkey == QLatin1String("ralt"))
        return QStringLiteral("Right ⌥");
    if (hotkey == QLatin1String("rcmd"))
        return QStringLiteral("Right ⌘");
    return fnLabel;
}

QString hotkeyLabel(const AppSettings& settings) {
    const QString hotkey = settings.hotkey();
    if (hotkey != QLatin1String("custom"))
        return hotkeyName(hotkey);
    const QString label = settings.hotkeyCustomLabel();
    return label.isEmpty() ? QStringLiteral("?") : label;
}

bool hotkeyIsFn(const AppSettings& settings) {
    return hotkeyLabel(settings) == fnLabel;
}

QString fnStandInKeyName(FnStandIn key) {
    switch (key) {
    case FnStandIn::None:
        return QStringLiteral("нет");
    case FnStandIn::RightControl:
        return QStringLiteral("правый Ctrl");
    case FnStandIn::RightOption:
        return QStringLiteral("правый Alt");
    case FnStandIn::RightCommand:
        return QStringLiteral("правый Super");
    case FnStandIn::Menu:
        return QStringLiteral("Menu");
    case FnStandIn::ScrollLock:
        return QStringLiteral("Scroll Lock");
    case FnStandIn::Pause:
        return QStringLiteral("Pause");
    }
    Q_UNREACHABLE();
}

QString fnStandInNote(const AppSettings& settings) {
    const FnStandIn key = fnStandInFromName(settings.fnStandIn());
    if (key == FnStandIn::None || !hotkeyIsFn(settings))
        return {};
    return QStringLiteral("Fn здесь — %1").arg(fnStandInKeyName(key));
}

} // namespace velmora
