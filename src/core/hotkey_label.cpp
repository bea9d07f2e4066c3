#include "core/hotkey_label.h"

#include "core/app_settings.h"
#include "platform/fn_stand_in.h"

namespace velmora {
namespace {

const QString fnLabel = QStringLiteral("Fn");

QString keyName(FnStandIn key) {
    switch (key) {
    case FnStandIn::None:
        break;
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
    return {};
}

} // namespace

QString hotkeyLabel(const AppSettings& settings) {
    const QString hotkey = settings.hotkey();
    if (hotkey == QLatin1String("ralt"))
        return QStringLiteral("Right ⌥");
    if (hotkey == QLatin1String("rcmd"))
        return QStringLiteral("Right ⌘");
    if (hotkey != QLatin1String("custom"))
        return fnLabel;
    const QString label = settings.hotkeyCustomLabel();
    return label.isEmpty() ? QStringLiteral("?") : label;
}

QString fnStandInNote(const AppSettings& settings) {
    const QString key = keyName(fnStandInFromName(settings.fnStandIn()));
    if (key.isEmpty() || hotkeyLabel(settings) != fnLabel)
        return {};
    return QStringLiteral("Fn здесь — %1").arg(key);
}

} // namespace velmora
