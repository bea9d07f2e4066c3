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

TEST(ThemeTokens, StrongGradient_RaisesEachComponentByATenthUpToOne) {
    const QColor end = themeTokens(true, QColor(250, 100, 0)).brandGradientStrongEnd;
    EXPECT_EQ(end.red(), 255);
    EXPECT_EQ(end.green(), 126);
    EXPECT_EQ(end.blue(), 26);
}
