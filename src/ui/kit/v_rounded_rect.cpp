#include "ui/kit/v_rounded_rect.h"

#include <QLinearGradient>
#include <QPainter>

namespace velmora {

VRoundedRect::VRoundedRect(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &VRoundedRect::changed, this, [this] { update(); });
}

void VRoundedRect::clearGradient() {
    if (!m_gradientEnd.isValid())
        return;
    m_gradientEnd = QColor();
    Q_EMIT changed();
}

void VRoundedRect::paint(QPainter* painter) {
    const QRectF rect = boundingRect();
    const qreal radius = std::min({m_radius, rect.width() / 2, rect.height() / 2});
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    QBrush fill(m_color);
    if (m_gradientEnd.isValid()) {
        QLinearGradient gradient(rect.topLeft(), rect.bottomRight());
        gradient.setColorAt(0, m_color);
        gradient.setColorAt(1, m_gradientEnd);
        fill = gradient;
    }
    painter->setBrush(fill);
    painter->drawRoundedRect(rect, radius, radius);
    if (m_borderWidth <= 0 || m_borderColor.alpha() == 0)
        return;
    QPainterPath ring;
    ring.addRoundedRect(rect, radius, radius);
    const qreal inner = std::max(radius - m_borderWidth, 0.0);
    ring.addRoundedRect(rect.adjusted(m_borderWidth, m_borderWidth, -m_borderWidth, -m_borderWidth), inner,
                        inner);
    painter->setBrush(m_borderColor);
    painter->drawPath(ring); // odd-even: the ring alone
}

} // namespace velmora
