#pragma once

#include "core/app_settings.h"
#include "platform/fn_stand_in.h"

#include <array>

namespace velmora {

/// The signals after which the hotkey may be called something else.
inline constexpr std::array hotkeyLabelChanges{
    &AppSettings::hotkeyChanged, &AppSettings::hotkeyCustomLabelChanged, &AppSettings::fnStandInChanged};

/// What the window calls the hotkey: "Fn", "Right ⌥", "Right ⌘" or the label of a custom one.
[[nodiscard]] QString hotkeyLabel(const AppSettings& settings);

/// What the window calls a stored hotkey that isn't a custom one; anything unknown is "Fn".
[[nodiscard]] QString hotkeyName(const QString& hotkey);

[[nodiscard]] bool hotkeyIsFn(const AppSettings& settings);

/// "правый Ctrl"; "нет" for none.
[[nodiscard]] QString fnStandInKeyName(FnStandIn key);

/// Which key plays Fn here; empty when the hotkey isn't Fn, or when nothing plays it.
[[nodiscard]] QString fnStandInNote(const AppSettings& settings);

} // namespace velmora
