#pragma once

#include "core/app_settings.h"
#include "platform/color_scheme.h"
#include "ui/kit/theme_tokens.h"

#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace velmora {

/// The design's colours. In a view, `VTheme` is the scheme that the desktop asks for, and follows it;
/// `VTheme.scheme(dark)` is one of the two whatever the desktop says. The accent follows the settings.
class VTheme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(QColor windowBg READ windowBg NOTIFY changed)
    Q_PROPERTY(QColor surface READ surface NOTIFY changed)
    Q_PROPERTY(QColor cardBg READ cardBg NOTIFY changed)
    Q_PROPERTY(QColor inputBg READ inputBg NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor textMuted READ textMuted NOTIFY changed)
    Q_PROPERTY(QColor textDim READ textDim NOTIFY changed)
    Q_PROPERTY(QColor hairline READ hairline NOTIFY changed)
    Q_PROPERTY(QColor hairlineStrong READ hairlineStrong NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentSoft READ accentSoft NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed)
    Q_PROPERTY(QColor red READ red NOTIFY changed)
    Q_PROPERTY(QColor green READ green NOTIFY changed)
    Q_PROPERTY(QColor amber READ amber NOTIFY changed)
    Q_PROPERTY(QColor brandGradientEnd READ brandGradientEnd NOTIFY changed)
    Q_PROPERTY(QColor brandGradientStrongEnd READ brandGradientStrongEnd NOTIFY changed)

public:
    VTheme(const AppSettings& settings, const ColorScheme& scheme, QObject* parent = nullptr);
    ~VTheme() override;

    /// The one that views see. It is made by the program before the first view, and outlives them all.
    static VTheme& shared();
    static VTheme* create(QQmlEngine*, QJSEngine*);

    [[nodiscard]] Q_INVOKABLE velmora::VTheme* scheme(bool dark);

    [[nodiscard]] bool isDark() const { return m_dark; }
    [[nodiscard]] const ThemeTokens& tokens() const { return m_tokens; }

    [[nodiscard]] QColor windowBg() const { return m_tokens.windowBg; }
    [[nodiscard]] QColor surface() const { return m_tokens.surface; }
    [[nodiscard]] QColor cardBg() const { return m_tokens.cardBg; }
    [[nodiscard]] QColor inputBg() const { return m_tokens.inputBg; }
    [[nodiscard]] QColor text() const { return m_tokens.text; }
    [[nodiscard]] QColor textMuted() const { return m_tokens.textMuted; }
    [[nodiscard]] QColor textDim() const { return m_tokens.textDim; }
    [[nodiscard]] QColor hairline() const { return m_tokens.hairline; }
    [[nodiscard]] QColor hairlineStrong() const { return m_tokens.hairlineStrong; }
    [[nodiscard]] QColor accent() const { return m_tokens.accent; }
    [[nodiscard]] QColor accentSoft() const { return m_tokens.accentSoft; }
    [[nodiscard]] QColor onAccent() const { return m_tokens.onAccent; }
    [[nodiscard]] QColor red() const { return m_tokens.red; }
    [[nodiscard]] QColor green() const { return m_tokens.green; }
    [[nodiscard]] QColor amber() const { return m_tokens.amber; }
    [[nodiscard]] QColor brandGradientEnd() const { return m_tokens.brandGradientEnd; }
    [[nodiscard]] QColor brandGradientStrongEnd() const { return m_tokens.brandGradientStrongEnd; }

Q_SIGNALS:
    void changed();

private:
    VTheme(const AppSettings& settings, bool dark, QObject* parent);

    void update();

    const AppSettings& m_settings;
    const ColorScheme* m_scheme; ///< none for one of the fixed schemes
    bool m_dark;
    ThemeTokens m_tokens;
    std::array<std::unique_ptr<VTheme>, 2> m_fixed; ///< light, dark; made when first asked for
};

} // namespace velmora
