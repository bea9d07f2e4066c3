#include "ui/hud/capsule_backdrop.h"

#include "ui/kit/blur.h"
#include "ui/kit/soft_shadow.h"
#include "ui/kit/theme_tokens.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QRadialGradient>

namespace velmora {
namespace {

struct Glow {
    qreal diameter;
    qreal blur; ///< sigma
};
constexpr Glow fullGlow{180, 38};
constexpr Glow minimalGlow{90, 22};
constexpr qreal gradientRadius = 180;
constexpr qreal glowOpacity = 0.8;
constexpr qreal glowReduction = 4; // so soft a light keeps nothing that a quarter of the pixels can't hold

constexpr qreal shadowRadius = 16;
constexpr qreal shadowOffset = 10;
constexpr qreal shadowOpacity = 0.45;
constexpr qreal edgeFade = 16; // at the top and the bottom
constexpr qreal sideFade = 12;

// The light as a small image; `opacities` are those of the gradient's even stops.
QImage glowImage(const Glow& glow, const QColor& accent, const std::vector<qreal>& opacities) {
    const qreal reach = 3 * glow.blur;
    const qreal side = glow.diameter + 2 * reach;
    // The brightest spot is drawn as black, so that all 256 shades serve the fall.
    QRadialGradient gradient(side / 2, side / 2, gradientRadius);
    for (std::size_t i = 0; i < opacities.size(); ++i)
        gradient.setColorAt(static_cast<qreal>(i) / static_cast<qreal>(opacities.size() - 1),
                            withOpacity(Qt::black, opacities[i] / opacities.front()));
    QImage alpha((QSizeF(side, side) / glowReduction).toSize(), QImage::Format_Alpha8);
    alpha.fill(0);
    {
        QPainter painter(&alpha);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(1 / glowReduction, 1 / glowReduction);
        painter.setPen(Qt::NoPen);
        painter.setBrush(gradient);
        painter.drawEllipse(QRectF(reach, reach, glow.diameter, glow.diameter));
    }
    return tinted(blurredAlpha(alpha, glow.blur / glowReduction),
                  withOpacity(accent, opacities.front() * glowOpacity));
}

// From nothing to all over the first share of the way, and back over the last.
QLinearGradient fade(const QPointF& way, qreal share) {
    QLinearGradient gradient(QPointF(), way);
    constexpr int steps = 8;
    for (int i = 0; i <= steps; ++i) {
        const qreal along = static_cast<qreal>(i) / steps;
        const QColor kept = withOpacity(Qt::black, along * along * (3 - 2 * along));
        gradient.setColorAt(along * std::min(share, 0.5), kept);
        gradient.setColorAt(1 - along * std::min(share, 0.5), kept);
    }
    return gradient;
}

} // namespace

CapsuleBackdrop::CapsuleBackdrop(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    connect(this, &CapsuleBackdrop::lightChanged, this, [this] {
        m_glow = {};
        update();
    });
    connect(this, &CapsuleBackdrop::capsuleChanged, this, [this] { update(); });
}

void CapsuleBackdrop::paint(QPainter* painter) {
    const qreal scale = window() ? window()->effectiveDevicePixelRatio() : 1;
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintGlow(*painter);
    paintShadow(*painter, scale);
    fadeEdges(*painter);
}

void CapsuleBackdrop::paintGlow(QPainter& painter) {
    if (m_glow.isNull())
        m_glow = glowImage(m_minimal ? minimalGlow : fullGlow, m_accent,
                           m_strong ? std::vector{0.30, 0.14, 0.0} : std::vector{0.25, 0.0});
    QRectF place(QPointF(), QSizeF(m_glow.size()) * glowReduction);
    place.moveCenter(boundingRect().center());
    painter.drawImage(place, m_glow);
}

// Not under the capsule itself: it would shine through and darken it.
void CapsuleBackdrop::paintShadow(QPainter& painter, qreal scale) const {
    const qreal radius = m_capsule.height() / 2;
    const QImage shadow =
        softShadow(m_capsule.size(), radius, shadowRadius, withOpacity(Qt::black, shadowOpacity), scale);
    if (shadow.isNull())
        return;
    const qreal reach = shadowReach(shadowRadius);
    QPainterPath around;
    around.addRect(boundingRect());
    around.addRoundedRect(m_capsule, radius, radius);
    painter.save();
    painter.setPen(Qt::NoPen);
    QBrush brush(shadow);
    const QPointF corner = m_capsule.topLeft() + QPointF(-reach, shadowOffset - reach);
    brush.setTransform(QTransform::fromTranslate(corner.x(), corner.y()).scale(1 / scale, 1 / scale));
    painter.setClipRect(QRectF(corner, QSizeF(shadow.size()) / scale)); // a brush repeats itself
    painter.fillPath(around, brush);
    painter.restore();
}

void CapsuleBackdrop::fadeEdges(QPainter& painter) const {
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(boundingRect(), fade({width(), 0}, sideFade / std::max(width(), 1.0)));
    painter.fillRect(boundingRect(), fade({0, height()}, edgeFade / std::max(height(), 1.0)));
}

} // namespace velmora
