#include "ui/kit/soft_shadow.h"

#include "ui/kit/blur.h"

#include <QPainter>

#include <cmath>

namespace velmora {

qreal shadowReach(qreal radius) {
    return std::ceil(radius * 1.5);
}

QImage softShadow(const QSizeF& shape, qreal cornerRadius, qreal radius, const QColor& color, qreal scale) {
    const qreal margin = shadowReach(radius);
    const QRectF rect(QPointF(margin, margin), shape);
    QImage alpha(((shape + QSizeF(margin, margin) * 2) * scale).toSize(), QImage::Format_Alpha8);
    if (alpha.isNull())
        return {};
    alpha.fill(0);
    const qreal corner = std::min({cornerRadius, rect.width() / 2, rect.height() / 2});
    {
        QPainter mask(&alpha);
        mask.setRenderHint(QPainter::Antialiasing);
        mask.scale(scale, scale);
        mask.setPen(Qt::NoPen);
        mask.setBrush(Qt::black);
        mask.drawRoundedRect(rect, corner, corner);
    }
    return tinted(blurredAlpha(alpha, radius / 2 * scale), color);
}

} // namespace velmora
