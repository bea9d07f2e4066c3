#pragma once

#include "core/app_settings.h"

namespace velmora {

/// What the popup prints on its key cap.
[[nodiscard]] QString hotkeyLabel(const AppSettings& settings);

/// Which key plays Fn here; empty when the hotkey isn't Fn, or when nothing plays it.
[[nodiscard]] QString fnStandInNote(const AppSettings& settings);

} // namespace velmora
