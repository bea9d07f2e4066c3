#include "ui/kit/v_shadow.h"

#include "ui/kit/blur.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace velmora {

VShadow::VShadow(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    connect(this, &VShadow::changed, this, [this] {
        layAroundTarget();
        update();
    });
}

void VShadow::setTarget(QQuickItem* target) {
    if (target == m_target)
        return;
    if (m_target)
        disconnect(m_target, nullptr, this, nullptr);
    m_target = target;
    if (target) {
        for (const auto signal : {&QQuickItem::xChanged, &QQuickItem::yChanged, &QQuickItem::widthChanged,
                                  &QQuickItem::heightChanged})
            connect(target, signal, this, &VShadow::layAroundTarget);
    }
    Q_EMIT changed();
}

// Three sigma: beyond it there is nothing to see.
qreal VShadow::reach() const {
    return std::ceil(m_radius * 1.5);
}

void VShadow::layAroundTarget() {
    if (!m_target)
        return;
    const qreal margin = reach();
    setPosition(QPointF(m_target->x() - margin, m_target->y() - margin + m_offsetY));
    setSize(QSizeF(m_target->width() + 2 * margin, m_target->height() + 2 * margin));
}

void VShadow::paint(QPainter* painter) {
    const qreal scale = painter->device()->devicePixelRatio() * painter->transform().m11();
    const qreal margin = reach();
    QImage alpha((size() * scale).toSize(), QImage::Format_Alpha8);
    alpha.fill(0);
    const QRectF shape = boundingRect().adjusted(margin, margin, -margin, -margin);
    const qreal corner = std::min({m_cornerRadius, shape.width() / 2, shape.height() / 2});
    {
        QPainter mask(&alpha);
        mask.setRenderHint(QPainter::Antialiasing);
        mask.scale(scale, scale);
        mask.setPen(Qt::NoPen);
        mask.setBrush(Qt::black);
        mask.drawRoundedRect(shape, corner, corner);
    }
    const QImage shadow = tinted(blurredAlpha(alpha, m_radius / 2 * scale), m_color);
    painter->drawImage(boundingRect(), shadow);
    if (!m_hollow)
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::black);
    painter->drawRoundedRect(shape.translated(0, -m_offsetY), corner, corner);
}

} // namespace velmora
