#pragma once

#include <QString>

namespace velmora {

class AppSettings;

/// What the window calls the hotkey: "Fn", "Right ⌥", "Right ⌘" or the label of a custom one.
[[nodiscard]] QString hotkeyLabel(const AppSettings& settings);

/// Which key plays Fn here; empty when the hotkey isn't Fn, or when nothing plays it.
[[nodiscard]] QString fnStandInNote(const AppSettings& settings);

} // namespace velmora
