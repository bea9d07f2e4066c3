#pragma once

#include <QRect>

namespace velmora {

/// Where the window opens, without the desktop's title bar around it.
struct WindowPlace {
    QRect frame;
    QSize minimumSize;

    bool operator==(const WindowPlace&) const = default;
};

/// In the middle of the free area of the screen. Its wanted sizes give way on a screen that is too small for
/// them, so that the title bar stays within reach.
[[nodiscard]] WindowPlace windowPlace(const QRect& available);

} // namespace velmora
