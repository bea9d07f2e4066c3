#include "ui/kit/v_shadow.h"

#include "ui/kit/soft_shadow.h"

#include <QPainter>

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

void VShadow::layAroundTarget() {
    if (!m_target)
        return;
    const qreal margin = shadowReach(m_radius);
    setPosition(QPointF(m_target->x() - margin, m_target->y() - margin + m_offsetY));
    setSize(QSizeF(m_target->width() + 2 * margin, m_target->height() + 2 * margin));
}

void VShadow::paint(QPainter* painter) {
    const qreal scale = painter->device()->devicePixelRatio() * painter->transform().m11();
    const qreal margin = shadowReach(m_radius);
    const QRectF shape = boundingRect().adjusted(margin, margin, -margin, -margin);
    painter->drawImage(boundingRect(), softShadow(shape.size(), m_cornerRadius, m_radius, m_color, scale));
    if (!m_hollow)
        return;
    const qreal corner = std::min({m_cornerRadius, shape.width() / 2, shape.height() / 2});
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::black);
    painter->drawRoundedRect(shape.translated(0, -m_offsetY), corner, corner);
}

} // namespace velmora
