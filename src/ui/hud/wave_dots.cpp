#include "ui/hud/wave_dots.h"

#include "ui/hud/level_shapes.h"

namespace velmora {

std::vector<qreal> WaveDots::wantedExtents() const {
    return waveDotDiameters(levels(), waveHeight());
}

qreal WaveDots::markWidth(qreal extent) const {
    return extent;
}

QSizeF WaveDots::wantedSize(const std::vector<qreal>& extents) const {
    return {std::min(rowWidth(extents), m_maximumWidth), waveHeight()};
}

} // namespace velmora
