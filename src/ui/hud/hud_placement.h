#pragma once

#include "platform/screens.h"

#include <QString>

namespace velmora {

/// Where the capsule's panel lies. Size and position are the settings as they are stored: what was never
/// stored counts as "medium" and "top" here, whatever the settings' own defaults are.
[[nodiscard]] QRect hudPanelFrame(const ScreenArea& screen, const std::optional<QString>& hudSize,
                                  const std::optional<QString>& hudPosition);

} // namespace velmora
