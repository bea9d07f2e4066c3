#include "ui/hud/wave_curve.h"

#include "ui/hud/level_shapes.h"

#include <QPainter>

namespace velmora {

void WaveCurve::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(waveCurvePath(levels(), size()), color());
}

void WaveCurve::followLevels() {
    if (std::ranges::equal(levels(), m_drawn))
        return;
    m_drawn.assign(levels().begin(), levels().end());
    update();
}

void WaveCurve::adjust() {
    m_drawn.assign(levels().begin(), levels().end());
    update();
}

} // namespace velmora
