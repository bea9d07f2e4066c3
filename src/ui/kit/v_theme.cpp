#include "ui/kit/v_theme.h"

#include "ui/kit/accent_theme.h"

#include <QQmlEngine>

namespace velmora {
namespace {

VTheme* theShared = nullptr;

} // namespace

VTheme::VTheme(const AppSettings& settings, const ColorScheme& scheme, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_scheme(&scheme)
    , m_dark(scheme.isDark()) {
    connect(&settings, &AppSettings::themeColorChanged, this, &VTheme::update);
    connect(&scheme, &ColorScheme::changed, this, &VTheme::update);
    update();
    theShared = this;
}

VTheme::VTheme(const AppSettings& settings, bool dark, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_scheme(nullptr)
    , m_dark(dark) {
    connect(&settings, &AppSettings::themeColorChanged, this, &VTheme::update);
    update();
}

VTheme::~VTheme() {
    if (theShared == this)
        theShared = nullptr;
}

VTheme& VTheme::shared() {
    Q_ASSERT(theShared);
    return *theShared;
}

VTheme* VTheme::create(QQmlEngine*, QJSEngine*) {
    QQmlEngine::setObjectOwnership(theShared, QQmlEngine::CppOwnership);
    return theShared;
}

VTheme* VTheme::scheme(bool dark) {
    std::unique_ptr<VTheme>& fixed = m_fixed[dark ? 1 : 0];
    if (!fixed) {
        fixed.reset(new VTheme(m_settings, dark, nullptr));
        QQmlEngine::setObjectOwnership(fixed.get(), QQmlEngine::CppOwnership);
    }
    return fixed.get();
}

void VTheme::update() {
    const bool dark = m_scheme ? m_scheme->isDark() : m_dark;
    const ThemeTokens tokens = themeTokens(dark, accentColor(accentThemeFromName(m_settings.themeColor())));
    if (dark == m_dark && tokens == m_tokens)
        return;
    m_dark = dark;
    m_tokens = tokens;
    Q_EMIT changed();
}

} // namespace velmora
