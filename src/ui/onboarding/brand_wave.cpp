#include "ui/onboarding/brand_wave.h"

#include <QPainter>

#include <cmath>
#include <numbers>

namespace velmora {
namespace {

constexpr double softest = 0.45; // of a bar's height in the mark
constexpr double loudest = 1.15;
constexpr double lag = 0.16;   // of a bar behind its neighbour
constexpr double tallest = 46; // on the mark's grid
constexpr double barWidth = 3.5;
constexpr double barSpacing = 2.5;

} // namespace

// Two waves of different length, so that the bars don't just march.
BrandBars brandWaveBars(double phase) {
    BrandBars bars = restingBrandBars;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const double turn = 2 * std::numbers::pi * (phase - lag * static_cast<double>(i));
        const double voice = 0.5 + 0.35 * std::sin(turn) + 0.15 * std::sin(3 * turn + 1);
        bars[i] = std::max(barWidth, bars[i] * (softest + (loudest - softest) * voice));
    }
    return bars;
}

BrandWave::BrandWave(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &BrandWave::changed, this, [this] { update(); });
}

void BrandWave::paint(QPainter* painter) {
    const BrandBars bars = brandWaveBars(m_phase);
    const double unit = height() / tallest;
    const auto count = static_cast<double>(bars.size());
    double left = (width() - (count * barWidth + (count - 1) * barSpacing) * unit) / 2;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    for (const double bar : bars) {
        painter->drawRoundedRect(QRectF(left, (height() - bar * unit) / 2, barWidth * unit, bar * unit),
                                 barWidth * unit / 2, barWidth * unit / 2);
        left += (barWidth + barSpacing) * unit;
    }
}

} // namespace velmora
