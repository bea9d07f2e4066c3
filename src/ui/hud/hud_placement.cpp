#include "ui/hud/hud_placement.h"

#include "ui/hud/hud_metrics.h"

namespace velmora {
namespace {

constexpr int bottomGap = 6;
constexpr int topOverlap = 8; // the capsule in the panel's middle stays clear of the line

} // namespace

QRect hudPanelFrame(const ScreenArea& screen, const std::optional<QString>& hudSize,
                    const std::optional<QString>& hudPosition) {
    const HudMetrics metrics = hudMetrics(hudSize.value_or(QStringLiteral("medium")), false);
    const QSize size(qRound(metrics.panelWidth), qRound(metrics.panelHeight));
    const int x = screen.frame.x() + (screen.frame.width() - size.width()) / 2;
    if (hudPosition == QLatin1String("bottom")) {
        const int bottom = screen.visibleFrame.y() + screen.visibleFrame.height();
        return {QPoint(x, bottom - bottomGap - size.height()), size};
    }
    const int topLine =
        screen.safeAreaTop > 0 ? screen.frame.y() + screen.safeAreaTop : screen.visibleFrame.y();
    return {QPoint(x, topLine - topOverlap), size};
}

} // namespace velmora
