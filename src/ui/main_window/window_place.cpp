#include "ui/main_window/window_place.h"

namespace velmora {
namespace {

constexpr QSize contentSize(980, 680);
constexpr QSize minimumContentSize(760, 560);
constexpr int titleBar = 40; // room for it; no desktop tells its height before there is a window

} // namespace

WindowPlace windowPlace(const QRect& available) {
    const QRect free = available.adjusted(0, titleBar, 0, 0);
    QRect frame(QPoint(), contentSize.boundedTo(free.size()));
    frame.moveCenter(available.center());
    frame.moveTop(std::clamp(frame.top(), free.top(), free.bottom() + 1 - frame.height()));
    return {frame, minimumContentSize.boundedTo(frame.size())};
}

} // namespace velmora
