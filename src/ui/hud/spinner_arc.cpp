#include "ui/hud/spinner_arc.h"

#include "ui/kit/theme_tokens.h"

#include <QPainter>

namespace velmora {
namespace {

constexpr qreal lineWidth = 2;
constexpr qreal trackOpacity = 0.15;
constexpr int sixteenths = 16; // of a degree, what arcs are told in; they count against the clock

} // namespace

SpinnerArc::SpinnerArc(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &SpinnerArc::changed, this, [this] {
        setImplicitSize(m_diameter + lineWidth, m_diameter + lineWidth);
        update();
    });
}

void SpinnerArc::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(boundingRect().center());
    const QRectF ring(-m_diameter / 2, -m_diameter / 2, m_diameter, m_diameter);
    painter->setPen(QPen(withOpacity(Qt::white, trackOpacity), lineWidth));
    painter->drawEllipse(ring);
    painter->setPen(QPen(m_accent, lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(ring, qRound(-m_angle * sixteenths), -90 * sixteenths);
}

} // namespace velmora
