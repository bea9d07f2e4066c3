#include "ui/hud/hud_metrics.h"

namespace velmora {
namespace {

constexpr qreal minimalWaveFactor = 0.62;
constexpr qreal panelMargin = 12; // keeps the capsule clear of the panel's edges

HudMetrics tableRow(const QString& hudSize) {
    HudMetrics metrics;
    if (hudSize == QLatin1String("small")) {
        metrics.panelHeight = 60;
        metrics.capsuleHeight = 28;
        metrics.dotDiameter = 9;
        metrics.waveWidth = 80;
        metrics.waveHeight = 14;
        metrics.dividerHeight = 10;
        metrics.textSize = 11;
        metrics.timerMinimumWidth = 33;
        metrics.spinnerDiameter = 12;
        metrics.crossSize = 12;
    } else if (hudSize == QLatin1String("large")) {
        metrics.panelHeight = 76;
        metrics.capsuleHeight = 44;
        metrics.dotDiameter = 13;
        metrics.waveWidth = 140;
        metrics.waveHeight = 30;
        metrics.dividerHeight = 26;
        metrics.textSize = 14;
        metrics.timerMinimumWidth = 42;
        metrics.spinnerDiameter = 28;
        metrics.crossSize = 15;
    } else {
        metrics.panelHeight = 66;
        metrics.capsuleHeight = 34;
        metrics.dotDiameter = 11;
        metrics.waveWidth = 110;
        metrics.waveHeight = 20;
        metrics.dividerHeight = 16;
        metrics.textSize = 12.5;
        metrics.timerMinimumWidth = 37.5;
        metrics.spinnerDiameter = 18;
        metrics.crossSize = 13.5;
    }
    return metrics;
}

} // namespace

HudMetrics hudMetrics(const QString& hudSize, bool hudMinimal) {
    HudMetrics metrics = tableRow(hudSize);
    metrics.capsulePadding = metrics.capsuleHeight / 3;
    metrics.itemSpacing = hudMinimal ? 0 : 10;
    if (hudMinimal)
        metrics.waveWidth *= minimalWaveFactor;
    metrics.contentMaximumWidth = metrics.panelWidth - 2 * panelMargin - 2 * metrics.capsulePadding;
    metrics.dotsMaximumWidth = metrics.contentMaximumWidth;
    if (!hudMinimal)
        metrics.dotsMaximumWidth -=
            metrics.dotDiameter + metrics.dividerWidth + metrics.timerMinimumWidth + 3 * metrics.itemSpacing;
    return metrics;
}

} // namespace velmora
