#include "ui/hud/live_bars.h"

#include "ui/hud/level_shapes.h"

#include <cmath>

namespace velmora {

std::vector<qreal> LiveBars::wantedExtents() const {
    return liveBarHeights(levels(), liveBarCapacity(width(), m_barWidth, spacing()), waveHeight());
}

qreal LiveBars::markWidth(qreal) const {
    return m_barWidth;
}

QSizeF LiveBars::wantedSize(const std::vector<qreal>& extents) const {
    return {rowWidth(extents), 2 * std::ceil(waveHeight() * liveBarGain / 2)};
}

} // namespace velmora
