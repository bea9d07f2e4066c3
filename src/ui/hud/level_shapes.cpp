#include "ui/hud/level_shapes.h"

#include <cmath>
#include <numbers>

namespace velmora {
namespace {

constexpr qreal smallestExtent = 3; // what silence looks like
constexpr std::size_t dotCount = 12;

std::span<const float> lastOf(std::span<const float> levels, std::size_t count) {
    return levels.last(std::min(count, levels.size()));
}

} // namespace

int liveBarCapacity(qreal width, qreal barWidth, qreal spacing) {
    return static_cast<int>(width / (barWidth + spacing));
}

std::vector<qreal> liveBarHeights(std::span<const float> levels, int capacity, qreal height) {
    const std::span<const float> shown = lastOf(levels, static_cast<std::size_t>(std::max(capacity, 0)));
    std::vector<qreal> heights;
    heights.reserve(shown.size());
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const qreal along = static_cast<qreal>(i) / static_cast<qreal>(shown.size());
        const qreal envelope = 0.7 + 0.3 * std::sin(along * std::numbers::pi);
        heights.push_back(
            std::max(smallestExtent, height * static_cast<qreal>(shown[i]) * liveBarGain * envelope));
    }
    return heights;
}

std::vector<qreal> waveDotDiameters(std::span<const float> levels, qreal height) {
    std::vector<qreal> diameters;
    for (const float level : lastOf(levels, dotCount))
        diameters.push_back(
            std::max(smallestExtent, (height - smallestExtent) * static_cast<qreal>(level) + smallestExtent));
    return diameters;
}

QPainterPath waveCurvePath(std::span<const float> levels, const QSizeF& frame) {
    if (levels.size() < 2)
        return {};
    const qreal middle = frame.height() * 0.5;
    const qreal step = frame.width() / static_cast<qreal>(levels.size() - 1);
    const auto point = [&](std::size_t i, int side) {
        return QPointF(step * static_cast<qreal>(i),
                       middle + side * 0.95 * middle * static_cast<qreal>(levels[i]));
    };
    QPainterPath path(point(0, -1));
    for (std::size_t i = 1; i < levels.size(); ++i) {
        const QPointF next = point(i, -1);
        path.quadTo((path.currentPosition() + next) / 2, next);
    }
    for (std::size_t i = levels.size(); i-- > 0;)
        path.lineTo(point(i, 1));
    path.closeSubpath();
    return path;
}

} // namespace velmora
