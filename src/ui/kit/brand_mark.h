#pragma once

#include <QColor>
#include <QRectF>

#include <optional>
#include <span>

class QPainter;

namespace velmora {

/// The radius of the mark's corners, for a mark of size 1.
inline constexpr double brandMarkRoundness = 0.26;

/// The program's mark: a tile in the accent's gradient with one dark bar for each height, in the middle of
/// `rect`. The heights are on a grid in which the tile is 72 units high. Without a `radius` the corners have
/// the mark's own.
void paintBrandMark(QPainter& painter, const QRectF& rect, std::span<const double> barHeights,
                    const QColor& accent, std::optional<double> radius = {});

} // namespace velmora
