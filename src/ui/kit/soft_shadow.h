#pragma once

#include <QColor>
#include <QImage>
#include <QSizeF>

namespace velmora {

/// How far a shadow of that radius, which is twice the blur's sigma, reaches beyond its shape: three sigma,
/// where there is nothing more to see.
[[nodiscard]] qreal shadowReach(qreal radius);

/// The shadow of a rounded rectangle with the reach as margin on each side. `scale` is physical pixels in one
/// of the shape's.
[[nodiscard]] QImage softShadow(const QSizeF& shape, qreal cornerRadius, qreal radius, const QColor& color,
                                qreal scale);

} // namespace velmora
