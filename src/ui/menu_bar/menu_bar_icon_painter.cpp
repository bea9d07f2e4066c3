#include "ui/menu_bar/menu_bar_icon_painter.h"

#include "ui/kit/blur.h"
#include "ui/kit/brand_mark.h"
#include "ui/kit/theme_tokens.h"

#include <QPainter>

namespace velmora {
namespace {

constexpr quint32 badgeRed = 0xFF3B30;
constexpr double badgeSize = 11;

QRectF centred(double width, double height) {
    const double side = MenuBarIconPainter::side;
    return {(side - width) / 2, (side - height) / 2, width, height};
}

QImage blank(QImage::Format format, double devicePixelRatio) {
    const int pixels = qRound(MenuBarIconPainter::side * devicePixelRatio);
    QImage image(pixels, pixels, format);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QImage MenuBarIconPainter::paint(MenuBarIconMode mode, const BrandBars& bars, double devicePixelRatio) const {
    QImage image = blank(QImage::Format_ARGB32_Premultiplied, devicePixelRatio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    paintGlow(painter, iconGlow(mode, m_accent), devicePixelRatio);
    paintBrandMark(painter, centred(markSize, markSize), bars, m_accent);
    if (mode == MenuBarIconMode::Error)
        paintBadge(painter);
    return image;
}

void MenuBarIconPainter::paintGlow(QPainter& painter, const IconGlow& glow, double devicePixelRatio) {
    if (glow.strength <= 0)
        return;
    QImage alpha = blank(QImage::Format_Alpha8, devicePixelRatio);
    {
        QPainter mask(&alpha);
        mask.setRenderHint(QPainter::Antialiasing);
        mask.setPen(Qt::NoPen);
        mask.setBrush(Qt::black);
        const double corner = markSize * brandMarkRoundness;
        mask.drawRoundedRect(centred(markSize, markSize), corner, corner);
    }
    const QImage light = blurredAlpha(alpha, glow.radius / 2 * devicePixelRatio);
    painter.drawImage(QPointF(0, 0), tinted(light, withOpacity(glow.color, glow.strength)));
}

// The sign's stem is as wide as two pixels of the smallest picture and lies on them, so that it stays sharp.
void MenuBarIconPainter::paintBadge(QPainter& painter) {
    painter.setBrush(colorFromHex(badgeRed));
    painter.drawEllipse(centred(badgeSize, badgeSize));
    const QRectF sign = centred(2, 7);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(sign.left(), sign.top(), 2, 4.4), 1, 1);
    painter.drawEllipse(QRectF(sign.left(), sign.bottom() - 2, 2, 2));
}

} // namespace velmora
