#pragma once

#include <QString>

#include <array>
#include <utility>

namespace velmora {

/// The key that plays Fn on keyboards that keep their own to themselves.
enum class FnStandIn { None, RightControl, RightOption, RightCommand, Menu, ScrollLock, Pause };

inline const std::array<std::pair<FnStandIn, QLatin1String>, 7> fnStandInNames{{
    {FnStandIn::None, QLatin1String("none")},
    {FnStandIn::RightControl, QLatin1String("rctrl")},
    {FnStandIn::RightOption, QLatin1String("ralt")},
    {FnStandIn::RightCommand, QLatin1String("rcmd")},
    {FnStandIn::Menu, QLatin1String("menu")},
    {FnStandIn::ScrollLock, QLatin1String("scrolllock")},
    {FnStandIn::Pause, QLatin1String("pause")},
}};

/// The stored form's key; anything unknown is the right Control key.
[[nodiscard]] inline FnStandIn fnStandInFromName(const QString& name) {
    for (const auto& [key, text] : fnStandInNames)
        if (name == text)
            return key;
    return FnStandIn::RightControl;
}

} // namespace velmora
