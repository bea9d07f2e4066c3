#pragma once

#include <QColor>

namespace velmora {

/// An sRGB colour from a 24-bit value.
[[nodiscard]] QColor colorFromHex(quint32 hex, qreal alpha = 1);
[[nodiscard]] QColor withOpacity(QColor color, qreal opacity);

/// The colours of one scheme.
struct ThemeTokens {
    QColor windowBg;
    QColor surface;
    QColor cardBg;
    QColor inputBg;
    QColor text;
    QColor textMuted;
    QColor textDim;
    QColor hairline;
    QColor hairlineStrong;
    QColor accent;
    QColor accentSoft;
    QColor onAccent;
    QColor red;
    QColor green;
    QColor amber;
    /// Both gradients run from the top leading to the bottom trailing corner.
    QColor brandGradientEnd;
    QColor brandGradientStrongEnd;

    bool operator==(const ThemeTokens&) const = default;
};

[[nodiscard]] ThemeTokens themeTokens(bool dark, const QColor& accent);

} // namespace velmora
