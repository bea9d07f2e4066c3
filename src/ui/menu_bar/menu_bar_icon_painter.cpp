#include "ui/menu_bar/menu_bar_icon_painter.h"

#include "ui/kit/blur.h"
#include "ui/kit/brand_mark.h"
#include "ui/kit/theme_tokens.h"

#include <QPainter>

#include <cmath>

namespace velmora {
namespace {

constexpr quint32 badgeRed = 0xFF3B30;
constexpr double badgeSize = 11;

// Where pixels are few the mark is one larger: an odd width has a pixel in its middle, for the middle bar.
QRectF markRect(double devicePixelRatio) {
    return devicePixelRatio < 2 ? QRectF(2, 2, 19, 19) : QRectF(2, 2, 18, 18);
}

QImage blank(QImage::Format format, double devicePixelRatio) {
    const int pixels = qRound(MenuBarIconPainter::side * devicePixelRatio);
    QImage image(pixels, pixels, format);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    return image;
}

void paintGlow(QPainter& painter, const QRectF& mark, const IconGlow& glow, double devicePixelRatio) {
    if (glow.strength <= 0)
        return;
    QImage alpha = blank(QImage::Format_Alpha8, devicePixelRatio);
    {
        QPainter mask(&alpha);
        mask.setRenderHint(QPainter::Antialiasing);
        mask.setPen(Qt::NoPen);
        mask.setBrush(Qt::black);
        const double corner = mark.width() * brandMarkRoundness;
        mask.drawRoundedRect(mark, corner, corner);
    }
    const QImage light = blurredAlpha(alpha, glow.radius / 2 * devicePixelRatio);
    painter.drawImage(QPointF(0, 0), tinted(light, withOpacity(glow.color, glow.strength)));
}

// Bars of whole pixels, one wide and one apart: at their true distances they would run together.
void paintPixelBars(QPainter& painter, const QRectF& mark, const BrandBars& bars) {
    const int middle = static_cast<int>(mark.center().x());
    int x = middle - static_cast<int>(bars.size()) + 1;
    for (const double height : bars) {
        const int half = static_cast<int>(std::lround((height * mark.height() / 72 - 1) / 2));
        painter.fillRect(x, middle - half, 1, 2 * half + 1, withOpacity(Qt::black, 0.85));
        x += 2;
    }
}

void paintBadge(QPainter& painter, const QRectF& mark) {
    QRectF badge(0, 0, badgeSize, badgeSize);
    badge.moveCenter(mark.center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorFromHex(badgeRed));
    painter.drawEllipse(badge);
    painter.setBrush(Qt::white);
    const double left = badge.center().x() - 1;
    painter.drawRoundedRect(QRectF(left, badge.top() + 2, 2, 4), 0.8, 0.8);
    painter.drawRoundedRect(QRectF(left, badge.top() + 7, 2, 2), 0.8, 0.8);
}

} // namespace

QImage MenuBarIconPainter::paint(MenuBarIconMode mode, const BrandBars& bars, double devicePixelRatio) const {
    QImage image = blank(QImage::Format_ARGB32_Premultiplied, devicePixelRatio);
    const QRectF mark = markRect(devicePixelRatio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintGlow(painter, mark, iconGlow(mode, m_accent), devicePixelRatio);
    const bool sharpen = devicePixelRatio < 2;
    paintBrandMark(painter, mark, sharpen ? std::span<const double>() : bars, m_accent);
    if (mode == MenuBarIconMode::Error)
        paintBadge(painter, mark); // wide enough to cover the bars at rest
    else if (sharpen)
        paintPixelBars(painter, mark, bars);
    return image;
}

} // namespace velmora
