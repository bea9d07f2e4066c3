#pragma once

#include <QRect>

#include <optional>

namespace velmora {

/// One screen in device-independent pixels of the virtual desktop, y growing downwards.
struct ScreenArea {
    QRect frame;         ///< the whole screen
    QRect visibleFrame;  ///< without panels and docks
    int safeAreaTop = 0; ///< what a notch takes from the top edge

    bool operator==(const ScreenArea&) const = default;
};

class Screens {
public:
    virtual ~Screens() = default;

    /// The screen of the window that has the keyboard focus, else the primary one; none when there is no
    /// screen.
    [[nodiscard]] virtual std::optional<ScreenArea> mainScreen() = 0;
    /// The screen that holds the point, else the main one.
    [[nodiscard]] virtual std::optional<ScreenArea> screenAt(const QPoint& point) = 0;
};

} // namespace velmora
