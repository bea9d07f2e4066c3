#include "ui/kit/theme_tokens.h"

namespace velmora {

QColor colorFromHex(quint32 hex, qreal alpha) {
    QColor color(static_cast<QRgb>(hex | 0xFF000000));
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

QColor withOpacity(QColor color, qreal opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

ThemeTokens themeTokens(bool dark, const QColor& accent) {
    const QColor white(Qt::white);
    const QColor black(Qt::black);
    const QColor ink = dark ? white : QColor(10, 18, 19);
    const auto raised = [](float component) { return std::min(component + 0.1F, 1.0F); };
    return {
        .windowBg = withOpacity(dark ? QColor(14, 18, 20) : white, 0.85),
        .surface = withOpacity(dark ? white : black, 0.03),
        .cardBg = withOpacity(white, dark ? 0.04 : 0.92),
        .inputBg = withOpacity(white, dark ? 0.05 : 0.95),
        .text = withOpacity(ink, dark ? 0.94 : 1),
        .textMuted = withOpacity(ink, 0.58),
        .textDim = withOpacity(ink, 0.34),
        .hairline = withOpacity(ink, 0.07),
        .hairlineStrong = withOpacity(ink, 0.12),
        .accent = accent,
        .accentSoft = withOpacity(accent, 0.16),
        .onAccent = black,
        .red = colorFromHex(dark ? 0xFF6B6B : 0xE5484D),
        .green = colorFromHex(dark ? 0x66D9C0 : 0x10B981),
        .amber = colorFromHex(dark ? 0xF3C969 : 0xD97706),
        .brandGradientEnd = withOpacity(accent, 0.78),
        .brandGradientStrongEnd =
            QColor::fromRgbF(raised(accent.redF()), raised(accent.greenF()), raised(accent.blueF())),
    };
}

} // namespace velmora
