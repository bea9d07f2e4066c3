#include "ui/kit/brand_mark.h"

#include "ui/kit/theme_tokens.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace velmora {
namespace {

constexpr qreal borderWidth = 0.5;
constexpr qreal grid = 72;
constexpr qreal barWidth = 3.5;
constexpr qreal barSpacing = 2.5;

void paintTile(QPainter& painter, const QRectF& tile, qreal radius, const QColor& accent) {
    QLinearGradient gradient(tile.topLeft(), tile.bottomRight());
    gradient.setColorAt(0, accent);
    gradient.setColorAt(1, themeTokens(true, accent).brandGradientStrongEnd);
    painter.setBrush(gradient);
    painter.drawRoundedRect(tile, radius, radius);

    QPainterPath ring;
    ring.addRoundedRect(tile, radius, radius);
    const qreal inner = std::max(radius - borderWidth, 0.0);
    ring.addRoundedRect(tile.adjusted(borderWidth, borderWidth, -borderWidth, -borderWidth), inner, inner);
    painter.setBrush(withOpacity(Qt::white, 0.12));
    painter.drawPath(ring);
}

void paintBars(QPainter& painter, const QRectF& tile, std::span<const double> heights) {
    const qreal unit = tile.width() / grid;
    const qreal width = barWidth * unit;
    const auto count = static_cast<qreal>(heights.size());
    qreal left = tile.center().x() - (count * barWidth + (count - 1) * barSpacing) * unit / 2;
    painter.setBrush(withOpacity(Qt::black, 0.85));
    for (const double entry : heights) {
        const qreal height = std::max(width, unit * entry);
        painter.drawRoundedRect(QRectF(left, tile.center().y() - height / 2, width, height), width / 2,
                                width / 2);
        left += (barWidth + barSpacing) * unit;
    }
}

} // namespace

void paintBrandMark(QPainter& painter, const QRectF& rect, std::span<const double> barHeights,
                    const QColor& accent, std::optional<double> radius) {
    const qreal size = std::min(rect.width(), rect.height());
    QRectF tile(0, 0, size, size);
    tile.moveCenter(rect.center());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    paintTile(painter, tile, std::min(radius.value_or(size * brandMarkRoundness), size / 2), accent);
    paintBars(painter, tile, barHeights);
    painter.restore();
}

} // namespace velmora
