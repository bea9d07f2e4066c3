#pragma once

#include "ui/menu_bar/menu_bar_icon_look.h"

#include <QImage>

namespace velmora {

/// Draws the tray icon: the mark in a square, its glow around it, and in trouble a badge on it.
class MenuBarIconPainter {
public:
    /// Trays are made for squares of this size.
    static constexpr int side = 22;

    explicit MenuBarIconPainter(const QColor& accent)
        : m_accent(accent) {}

    /// A square of `side`, drawn for the pixels of that ratio.
    [[nodiscard]] QImage paint(MenuBarIconMode mode, const BrandBars& bars, double devicePixelRatio) const;

private:
    QColor m_accent;
};

} // namespace velmora
