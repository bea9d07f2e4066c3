#include "ui/hud/level_row.h"

#include <QPainter>
#include <QQuickWindow>

#include <cmath>

namespace velmora {
namespace {

constexpr auto glideDuration = std::chrono::milliseconds(100);

QEasingCurve easeOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return curve;
}

} // namespace

LevelRow::LevelRow(QQuickItem* parent)
    : LevelView(parent) {
    m_glide.setDuration(static_cast<int>(glideDuration.count()));
    m_glide.setStartValue(0.0);
    m_glide.setEndValue(1.0);
    m_glide.setEasingCurve(easeOut());
    connect(&m_glide, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
        if (progress.toReal() > 0) // the first step is where the marks are already
            refresh();
    });
}

std::vector<qreal> LevelRow::extents() const {
    if (!isGliding())
        return m_targets;
    const qreal progress = m_glide.currentValue().toReal();
    std::vector<qreal> now(m_targets.size());
    for (std::size_t i = 0; i < now.size(); ++i)
        now[i] = m_origins[i] + (m_targets[i] - m_origins[i]) * progress;
    return now;
}

// Silence after silence moves nothing, and so costs nothing.
void LevelRow::followLevels() {
    std::vector<qreal> wanted = wantedExtents();
    if (wanted == m_targets)
        return;
    if (wanted.size() != m_targets.size() || !isVisible()) {
        adjust();
        return;
    }
    m_origins = extents();
    m_targets = std::move(wanted);
    m_glide.stop();
    m_glide.start();
}

void LevelRow::adjust() {
    m_glide.stop();
    m_targets = wantedExtents();
    refresh();
}

void LevelRow::refresh() {
    const QSizeF size = wantedSize(extents());
    setImplicitSize(size.width(), size.height());
    update();
}

void LevelRow::geometryChange(const QRectF& now, const QRectF& before) {
    LevelView::geometryChange(now, before);
    if (now.size() != before.size() && wantedExtents().size() != m_targets.size())
        adjust();
}

qreal LevelRow::rowWidth(const std::vector<qreal>& extents) const {
    qreal width = 0;
    for (const qreal extent : extents)
        width += markWidth(extent);
    return extents.empty() ? 0 : width + m_spacing * static_cast<qreal>(extents.size() - 1);
}

void LevelRow::paint(QPainter* painter) {
    const std::vector<qreal> heights = extents();
    const qreal row = rowWidth(heights);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color());
    const qreal shrink = row > width() ? width() / row : 1;
    // The first mark begins on a pixel, so that marks of whole widths are sharp at both sides.
    const qreal scale = window() ? window()->effectiveDevicePixelRatio() : 1;
    painter->translate(std::round((width() - row * shrink) / 2 * scale) / scale, height() / 2);
    painter->scale(shrink, shrink);
    qreal x = 0;
    for (const qreal markHeight : heights) {
        const QRectF mark(x, -markHeight / 2, markWidth(markHeight), markHeight);
        const qreal radius = std::min(mark.width(), mark.height()) / 2;
        painter->drawRoundedRect(mark, radius, radius);
        x += mark.width() + m_spacing;
    }
}

} // namespace velmora
