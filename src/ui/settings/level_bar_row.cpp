#include "ui/settings/level_bar_row.h"

#include <QPainter>

namespace velmora {
namespace {

constexpr qreal barWidth = 5;
constexpr qreal spacing = 2;
constexpr qreal rowHeight = 16;
constexpr qreal corner = 1.5;
constexpr qreal darkOpacity = 0.16;

} // namespace

qreal levelBarOpacity(int bar, qreal level) {
    const qreal lit = std::clamp(level * LevelBarRow::barCount - bar, 0.0, 1.0);
    return darkOpacity + (1 - darkOpacity) * lit;
}

LevelBarRow::LevelBarRow(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setImplicitSize(barCount * (barWidth + spacing) - spacing, rowHeight);
    setAntialiasing(true);
    connect(this, &LevelBarRow::colorChanged, this, [this] { update(); });
}

void LevelBarRow::setLevel(qreal level) {
    if (level == m_level)
        return;
    m_level = level;
    update();
    Q_EMIT levelChanged();
}

void LevelBarRow::paint(QPainter* painter) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    for (int bar = 0; bar < barCount; ++bar) {
        painter->setOpacity(levelBarOpacity(bar, m_level));
        painter->drawRoundedRect(QRectF(bar * (barWidth + spacing), 0, barWidth, height()), corner, corner);
    }
}

} // namespace velmora
