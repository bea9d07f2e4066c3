#include "ui/menu_bar/popup_placement.h"

namespace velmora {
namespace {

constexpr int sideMargin = 8;
constexpr int gap = 4;

// The lower bound wins where the range is empty.
int within(int value, int least, int most) {
    return std::max(std::min(value, most), least);
}

int bottomOf(const QRect& rect) {
    return rect.y() + rect.height(); // QRect::bottom() is one less
}

int rightOf(const QRect& rect) {
    return rect.x() + rect.width();
}

} // namespace

QRect popupFrame(QSize size, const QRect& anchor, const std::optional<ScreenArea>& screen) {
    const int middle = anchor.x() + anchor.width() / 2;
    int x = middle - size.width() / 2;
    int y = bottomOf(anchor) + gap;
    if (!screen) // the anchor stands in for it
        return {{std::min(std::max(x, sideMargin), rightOf(anchor) - size.width() - sideMargin), y}, size};

    const QRect& free = screen->visibleFrame;
    x = within(x, free.x() + sideMargin, rightOf(free) - size.width() - sideMargin);
    if (y + size.height() + gap > bottomOf(free))
        y = anchor.y() - gap - size.height();
    // A tray that doesn't tell its place leaves the pointer, which is somewhere in its panel.
    y = within(y, free.y() + gap, bottomOf(free) - size.height() - gap);
    return {{x, y}, size};
}

QRect popupWindowFrame(const QRect& popup, const QMargins& shadow, const std::optional<ScreenArea>& screen) {
    const QRect window = popup.marginsAdded(shadow);
    return screen ? window.intersected(screen->visibleFrame).united(popup) : window;
}

} // namespace velmora
