#include "ui/onboarding/accent_glow.h"

#include <QPainter>

#include <cmath>
#include <random>

namespace velmora {
namespace {

constexpr double reach = 0.36; // of the size, at which the light is down to a third

/// The light along one axis, seen from `centre`.
std::vector<float> fading(int count, double centre) {
    std::vector<float> light(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double away = ((i + 0.5) / count - centre) / reach;
        light[static_cast<std::size_t>(i)] = static_cast<float>(std::exp(-away * away));
    }
    return light;
}

} // namespace

QImage accentGlow(QSize size, const QColor& color) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    const std::vector<float> across = fading(size.width(), 0.5);
    const std::vector<float> down = fading(size.height(), 0);
    const float brightest = color.alphaF() * 255;
    std::minstd_rand random; // from its fixed seed: the picture is the same every time
    std::uniform_real_distribution<float> between(0, 1);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const float alpha =
                brightest * across[static_cast<std::size_t>(x)] * down[static_cast<std::size_t>(y)];
            const float threshold = between(random);
            const auto scattered = [threshold](float value) { return static_cast<int>(value + threshold); };
            line[x] = qRgba(scattered(alpha * color.redF()), scattered(alpha * color.greenF()),
                            scattered(alpha * color.blueF()), scattered(alpha));
        }
    }
    return image;
}

AccentGlow::AccentGlow(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    connect(this, &AccentGlow::changed, this, [this] { update(); });
}

void AccentGlow::paint(QPainter* painter) {
    const qreal scale = painter->device()->devicePixelRatio() * painter->transform().m11();
    painter->drawImage(boundingRect(), accentGlow((size() * scale).toSize(), m_color));
}

} // namespace velmora
