#include "ui/kit/blur.h"

#include <cmath>

namespace velmora {
namespace {

// Three boxes of these radii have together the variance of the Gaussian.
std::array<int, 3> boxRadii(qreal sigma) {
    constexpr int boxes = 3;
    const qreal ideal = std::sqrt(12 * sigma * sigma / boxes + 1);
    int lower = static_cast<int>(ideal);
    if (lower % 2 == 0)
        --lower;
    const qreal smaller =
        (12 * sigma * sigma - boxes * lower * lower - 4 * boxes * lower - 3 * boxes) / (-4 * lower - 4);
    std::array<int, 3> radii{};
    for (int i = 0; i < boxes; ++i)
        radii[static_cast<std::size_t>(i)] = (i < std::lround(smaller) ? lower : lower + 2) / 2;
    return radii;
}

// One line of `count` bytes that lie `stride` apart.
void blurLine(uchar* line, std::ptrdiff_t count, std::ptrdiff_t stride, std::ptrdiff_t radius,
              std::vector<uchar>& copy) {
    const auto original = copy.begin();
    for (std::ptrdiff_t i = 0; i < count; ++i)
        original[i] = line[i * stride];
    const std::ptrdiff_t width = 2 * radius + 1;
    std::ptrdiff_t sum = 0;
    for (std::ptrdiff_t i = 0; i < std::min(radius, count); ++i)
        sum += original[i];
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        if (i + radius < count)
            sum += original[i + radius];
        line[i * stride] = static_cast<uchar>((sum + width / 2) / width);
        if (i - radius >= 0)
            sum -= original[i - radius];
    }
}

} // namespace

QImage blurredAlpha(const QImage& alpha, qreal sigma) {
    QImage image = alpha;
    if (sigma <= 0 || image.isNull())
        return image;
    uchar* bits = image.bits();
    const qsizetype bytesPerLine = image.bytesPerLine();
    std::vector<uchar> copy(static_cast<std::size_t>(std::max(image.width(), image.height())));
    for (const int radius : boxRadii(sigma)) {
        for (int y = 0; y < image.height(); ++y)
            blurLine(bits + y * bytesPerLine, image.width(), 1, radius, copy);
        for (int x = 0; x < image.width(); ++x)
            blurLine(bits + x, image.height(), bytesPerLine, radius, copy);
    }
    return image;
}

QImage tinted(const QImage& alpha, const QColor& color) {
    QImage image(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(alpha.devicePixelRatio());
    std::array<QRgb, 256> shades{};
    for (int a = 0; a < 256; ++a)
        shades[static_cast<std::size_t>(a)] = qPremultiply(
            qRgba(color.red(), color.green(), color.blue(), qRound(static_cast<qreal>(color.alphaF()) * a)));
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar* from = alpha.constScanLine(y);
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < alpha.width(); ++x)
            to[x] = shades[from[x]];
    }
    return image;
}

} // namespace velmora
