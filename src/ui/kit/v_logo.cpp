#include "ui/kit/v_logo.h"

#include "ui/kit/brand_mark.h"
#include "ui/kit/v_theme.h"

#include <QPainter>

namespace velmora {

VLogo::VLogo(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setImplicitSize(m_size, m_size);
    connect(this, &VLogo::changed, this, [this] { update(); });
    connect(&VTheme::shared(), &VTheme::changed, this, [this] { update(); });
}

void VLogo::setSize(qreal size) {
    if (size == m_size)
        return;
    m_size = size;
    setImplicitSize(size, size);
    Q_EMIT changed();
}

qreal VLogo::radius() const {
    return m_radius.value_or(m_size * brandMarkRoundness);
}

void VLogo::setRadius(qreal radius) {
    m_radius = radius;
    Q_EMIT changed();
}

void VLogo::resetRadius() {
    m_radius.reset();
    Q_EMIT changed();
}

void VLogo::paint(QPainter* painter) {
    paintBrandMark(*painter, boundingRect(), m_bars, VTheme::shared().tokens().accent, m_radius);
}

} // namespace velmora
