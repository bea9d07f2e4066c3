#pragma once

#include "ui/kit/v_pill_nav_item.h"

#include <vector>

namespace velmora {

/// The tabs of the settings, in their order.
[[nodiscard]] const std::vector<VPillNavItem>& settingsTabs();

/// The tab so many steps on, around the end; from an unknown one, the first or the last.
[[nodiscard]] QString settingsTabBeside(const QString& tab, int steps);

} // namespace velmora
