#include "ui/kit/window_place.h"

namespace velmora {
namespace {

constexpr int titleBar = 40; // room for it; no desktop tells its height before there is a window

} // namespace

WindowPlace windowPlace(const QRect& available, const WindowSizes& wanted) {
    const QRect free = available.adjusted(0, titleBar, 0, 0);
    QRect frame(QPoint(), wanted.content.boundedTo(free.size()));
    frame.moveCenter(available.center());
    frame.moveTop(std::clamp(frame.top(), free.top(), free.bottom() + 1 - frame.height()));
    return {frame, wanted.minimum.boundedTo(frame.size())};
}

} // namespace velmora
