#pragma once

#include <QPainterPath>
#include <QSizeF>

#include <span>
#include <vector>

namespace velmora {

/// The shapes of a voice. Levels are 0 to 1, the newest last.

/// How many bars a frame of that width has room for.
[[nodiscard]] int liveBarCapacity(qreal width, qreal barWidth, qreal spacing);
/// A height for each of the last levels, at most `capacity` of them. The bars in the middle are taller than
/// those at the ends, and a loud voice overshoots `height`, by liveBarGain at most.
[[nodiscard]] std::vector<qreal> liveBarHeights(std::span<const float> levels, int capacity, qreal height);
inline constexpr qreal liveBarGain = 1.3;

/// A diameter for each of the last twelve levels.
[[nodiscard]] std::vector<qreal> waveDotDiameters(std::span<const float> levels, qreal height);

/// A band around the frame's horizontal middle, as thick as the voice is loud; empty for less than two
/// levels.
[[nodiscard]] QPainterPath waveCurvePath(std::span<const float> levels, const QSizeF& frame);

} // namespace velmora
