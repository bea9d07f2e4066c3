#pragma once

#include <QString>

namespace velmora {

class AppSettings;

/// What the window calls the hotkey: "Fn", "Right ⌥", "Right ⌘" or the label of a custom one.
[[nodiscard]] QString hotkeyLabel(const AppSettings& settings);

/// Which key plays Fn here, as a sentence; empty when the hotkey is another one or nothing stands in for it.
[[nodiscard]] QString fnStandInHint(const AppSettings& settings);

} // namespace velmora
