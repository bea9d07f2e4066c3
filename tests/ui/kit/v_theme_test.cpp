#include "support/ui/view_host.h"
#include "ui/kit/accent_theme.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class VThemeTest : public testing::Test {
protected:
    ViewHost host;
};

} // namespace

TEST(AccentTheme, UnknownValue_IsLime) {
    EXPECT_EQ(accentThemeFromName(QStringLiteral("teal")), AccentTheme::Teal);
    for (const char* name : {"lime", "", "Teal", "purple"})
        EXPECT_EQ(accentThemeFromName(QLatin1String(name)), AccentTheme::Lime) << name;
    EXPECT_EQ(accentColor(AccentTheme::Teal), QColor(0x80, 0xCB, 0xC4));
    EXPECT_EQ(accentColor(AccentTheme::Lime), QColor(0xA8, 0xCC, 0x5A));
}

TEST_F(VThemeTest, AccentChanged_ViewsFollowAtOnce) {
    host.showSource("import QtQuick\nimport Velmora.Kit\n"
                    "Rectangle { width: 20; height: 20; color: VTheme.accent\n"
                    "Rectangle { objectName: 'light'; color: VTheme.scheme(false).accent } }");
    host.settings.setThemeColor(QStringLiteral("teal"));
    EXPECT_EQ(host.root()->property("color").value<QColor>(), QColor(0x80, 0xCB, 0xC4));
    EXPECT_EQ(host.find(QStringLiteral("light"))->property("color").value<QColor>(),
              QColor(0x80, 0xCB, 0xC4));
}

TEST_F(VThemeTest, DesktopTurnsLight_ViewsFollowAndFixedSchemesStay) {
    host.showSource("import QtQuick\nimport Velmora.Kit\n"
                    "Rectangle { width: 20; height: 20; color: VTheme.text\n"
                    "Rectangle { objectName: 'dark'; color: VTheme.scheme(true).text } }");
    const QColor darkText = themeTokens(true, {}).text;
    EXPECT_EQ(host.root()->property("color").value<QColor>(), darkText);
    host.scheme.setDark(false);
    EXPECT_EQ(host.root()->property("color").value<QColor>(), QColor(10, 18, 19));
    EXPECT_EQ(host.find(QStringLiteral("dark"))->property("color").value<QColor>(), darkText);
}

TEST_F(VThemeTest, SameSchemeAnnounced_IsNoChange) {
    const QSignalSpy changes(&host.theme, &VTheme::changed);
    host.scheme.setDark(true);
    EXPECT_TRUE(changes.isEmpty());
}

TEST(ThemeTokens, EitherScheme_IsAsDesigned) {
    const QColor lime = accentColor(AccentTheme::Lime);
    const ThemeTokens dark = themeTokens(true, lime);
    const ThemeTokens light = themeTokens(false, lime);
    const auto ink = [](int red, int green, int blue, double opacity) {
        return withOpacity(QColor(red, green, blue), opacity);
    };
    struct Row {
        const char* name;
        QColor ThemeTokens::*token;
        QColor dark;
        QColor light;
    };
    const std::array rows{
        Row{"windowBg", &ThemeTokens::windowBg, ink(14, 18, 20, 0.85), ink(255, 255, 255, 0.85)},
        Row{"surface", &ThemeTokens::surface, ink(255, 255, 255, 0.03), ink(0, 0, 0, 0.03)},
        Row{"cardBg", &ThemeTokens::cardBg, ink(255, 255, 255, 0.04), ink(255, 255, 255, 0.92)},
        Row{"inputBg", &ThemeTokens::inputBg, ink(255, 255, 255, 0.05), ink(255, 255, 255, 0.95)},
        Row{"text", &ThemeTokens::text, ink(255, 255, 255, 0.94), ink(10, 18, 19, 1)},
        Row{"textMuted", &ThemeTokens::textMuted, ink(255, 255, 255, 0.58), ink(10, 18, 19, 0.58)},
        Row{"textDim", &ThemeTokens::textDim, ink(255, 255, 255, 0.34), ink(10, 18, 19, 0.34)},
        Row{"hairline", &ThemeTokens::hairline, ink(255, 255, 255, 0.07), ink(10, 18, 19, 0.07)},
        Row{"hairlineStrong", &ThemeTokens::hairlineStrong, ink(255, 255, 255, 0.12), ink(10, 18, 19, 0.12)},
        Row{"accent", &ThemeTokens::accent, lime, lime},
        Row{"accentSoft", &ThemeTokens::accentSoft, withOpacity(lime, 0.16), withOpacity(lime, 0.16)},
        Row{"onAccent", &ThemeTokens::onAccent, ink(0, 0, 0, 1), ink(0, 0, 0, 1)},
        Row{"red", &ThemeTokens::red, ink(0xFF, 0x6B, 0x6B, 1), ink(0xE5, 0x48, 0x4D, 1)},
        Row{"green", &ThemeTokens::green, ink(0x66, 0xD9, 0xC0, 1), ink(0x10, 0xB9, 0x81, 1)},
        Row{"amber", &ThemeTokens::amber, ink(0xF3, 0xC9, 0x69, 1), ink(0xD9, 0x77, 0x06, 1)},
        Row{"brandGradientEnd", &ThemeTokens::brandGradientEnd, withOpacity(lime, 0.78),
            withOpacity(lime, 0.78)},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(dark.*row.token, row.dark) << row.name;
        EXPECT_EQ(light.*row.token, row.light) << row.name;
    }
}

TEST(ThemeTokens, StrongGradient_RaisesEachComponentByATenthUpToOne) {
    const QColor end = themeTokens(true, QColor(250, 100, 0)).brandGradientStrongEnd;
    EXPECT_EQ(end.red(), 255);
    EXPECT_EQ(end.green(), 126);
    EXPECT_EQ(end.blue(), 26);
}
