#pragma once

#include "core/pipeline_state.h"
#include "ui/kit/brand_bars.h"

#include <QColor>

#include <span>

namespace velmora {

/// What the tray icon tells without a click.
enum class MenuBarIconMode { Idle, Recording, Processing, Error };

[[nodiscard]] MenuBarIconMode menuBarIconMode(const PipelineState& state);

/// Whether the mode's picture changes by itself.
[[nodiscard]] constexpr bool isMoving(MenuBarIconMode mode) {
    return mode == MenuBarIconMode::Recording || mode == MenuBarIconMode::Processing;
}

/// The light around the mark.
struct IconGlow {
    QColor color;
    double strength = 0; ///< its opacity
    double radius = 0;   ///< twice the blur's sigma, in pixels of a mark 18 wide

    bool operator==(const IconGlow&) const = default;
};

[[nodiscard]] IconGlow iconGlow(MenuBarIconMode mode, const QColor& accent);

/// The bars of a dictation that is being recorded, from the recorder's levels, oldest first.
[[nodiscard]] BrandBars voiceBars(std::span<const float> levels);
/// A wave that travels along the bars. It comes again every waveBarsPeriod seconds.
[[nodiscard]] BrandBars waveBars(double seconds);
inline constexpr double waveBarsPeriod = 2 * 3.14159265358979323846 / 2.2;

} // namespace velmora
