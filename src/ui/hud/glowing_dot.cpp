#include "ui/hud/glowing_dot.h"

#include "ui/kit/soft_shadow.h"
#include "ui/kit/theme_tokens.h"

#include <QPainter>
#include <QQuickWindow>

#include <cmath>

namespace velmora {
namespace {

constexpr qreal lightRadius = 6;
constexpr qreal lightOpacity = 0.6;
constexpr qreal largestPulse = 1.15;

} // namespace

GlowingDot::GlowingDot(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &GlowingDot::changed, this, &GlowingDot::fit);
    connect(this, &GlowingDot::pulseChanged, this, [this] { update(); });
}

void GlowingDot::fit() {
    m_light = {};
    const qreal side = 2 * std::ceil((m_diameter / 2 + shadowReach(lightRadius)) * largestPulse);
    setImplicitSize(side, side);
    update();
}

void GlowingDot::paint(QPainter* painter) {
    const qreal radius = m_diameter / 2;
    const qreal scale = window() ? window()->effectiveDevicePixelRatio() : 1;
    if (m_light.isNull() || m_lightScale != scale) {
        m_light = softShadow({m_diameter, m_diameter}, radius, lightRadius,
                             withOpacity(m_color, lightOpacity), scale);
        m_lightScale = scale;
    }
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter->translate(boundingRect().center());
    painter->scale(m_pulse, m_pulse);
    QRectF light(QPointF(), QSizeF(m_light.size()) / scale);
    light.moveCenter({});
    painter->drawImage(light, m_light);
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    painter->drawEllipse(QPointF(), radius, radius);
}

} // namespace velmora
