#pragma once

#include "platform/screens.h"

#include <QMargins>
#include <QSize>

namespace velmora {

/// Where a popup of that size goes: in the middle below its anchor, or above it where there is no room below,
/// and never beyond what panels leave of the screen.
[[nodiscard]] QRect popupFrame(QSize size, const QRect& anchor, const std::optional<ScreenArea>& screen);

/// The popup's window: the popup with room for its shadow, as far as the screen has any. A window manager
/// pushes a window that reaches beyond.
[[nodiscard]] QRect popupWindowFrame(const QRect& popup, const QMargins& shadow,
                                     const std::optional<ScreenArea>& screen);

} // namespace velmora
