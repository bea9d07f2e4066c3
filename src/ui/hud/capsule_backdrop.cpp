#include "ui/hud/capsule_backdrop.h"

#include "ui/kit/blur.h"
#include "ui/kit/soft_shadow.h"
#include "ui/kit/theme_tokens.h"

#include <QPainter>
#include <QPainterPath>
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
// So soft a light and shadow hold nothing that needs every pixel.
constexpr qreal glowReduction = 4;

constexpr qreal shadowRadius = 16;
constexpr qreal shadowOffset = 10;
constexpr qreal shadowOpacity = 0.45;
constexpr qreal shadowReduction = 2;
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

// Lets what is painted in the strip fade away towards `edge`.
void fadeOut(QPainter& painter, const QRectF& strip, const QPointF& inside, const QPointF& edge) {
    QLinearGradient kept(edge, inside);
    constexpr int steps = 8;
    for (int i = 0; i <= steps; ++i) {
        const qreal along = static_cast<qreal>(i) / steps;
        kept.setColorAt(along, withOpacity(Qt::black, along * along * (3 - 2 * along)));
    }
    painter.fillRect(strip, kept);
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
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintGlow(*painter);
    paintShadow(*painter);
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
void CapsuleBackdrop::paintShadow(QPainter& painter) const {
    const qreal radius = m_capsule.height() / 2;
    const QImage shadow = softShadow(m_capsule.size(), radius, shadowRadius,
                                     withOpacity(Qt::black, shadowOpacity), 1 / shadowReduction);
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
    brush.setTransform(
        QTransform::fromTranslate(corner.x(), corner.y()).scale(shadowReduction, shadowReduction));
    painter.setClipRect(QRectF(corner, QSizeF(shadow.size()) * shadowReduction)); // a brush repeats itself
    painter.fillPath(around, brush);
    painter.restore();
}

void CapsuleBackdrop::fadeEdges(QPainter& painter) const {
    const QRectF all = boundingRect();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    fadeOut(painter, {0, 0, all.width(), edgeFade}, {0, edgeFade}, {0, 0});
    fadeOut(painter, {0, all.bottom() - edgeFade, all.width(), edgeFade}, {0, all.bottom() - edgeFade},
            {0, all.bottom()});
    fadeOut(painter, {0, 0, sideFade, all.height()}, {sideFade, 0}, {0, 0});
    fadeOut(painter, {all.right() - sideFade, 0, sideFade, all.height()}, {all.right() - sideFade, 0},
            {all.right(), 0});
}

} // namespace velmora
