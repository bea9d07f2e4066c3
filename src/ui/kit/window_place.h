#pragma once

#include <QRect>

namespace velmora {

/// How large the content of a window is to be, and may be made.
struct WindowSizes {
    QSize content;
    QSize minimum;

    [[nodiscard]] bool areFixed() const { return content == minimum; }
};

/// Where the window opens, without the desktop's title bar around it.
struct WindowPlace {
    QRect frame;
    QSize minimumSize;

    bool operator==(const WindowPlace&) const = default;
};

/// In the middle of the free area of the screen. The wanted sizes give way on a screen that is too small for
/// them, so that the title bar stays within reach.
[[nodiscard]] WindowPlace windowPlace(const QRect& available, const WindowSizes& wanted);

} // namespace velmora
