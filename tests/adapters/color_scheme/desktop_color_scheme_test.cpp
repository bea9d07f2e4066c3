#include "fake_settings_portal.h"
#include "platform/linux/desktop_color_scheme.h"
#include "support/private_bus.h"
#include "support/wait.h"

#include <QDBusPendingCallWatcher>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr uint noPreference = 0;
constexpr uint dark = 1;
constexpr uint light = 2;

class DesktopColorSchemeTest : public testing::Test {
protected:
    DesktopColorSchemeTest() { setPalette(Qt::white, Qt::black); }

    static void setPalette(const QColor& window, const QColor& text) {
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::WindowText, text);
        QGuiApplication::setPalette(palette);
    }
    void startPortal(uint colorScheme) {
        portal = std::make_unique<FakeSettingsPortal>(bus.connect(QStringLiteral("portal")));
        portal->colorScheme = colorScheme;
    }
    /// Returns when everything is there that the portal has sent until now: answers keep their order.
    void settle() {
        QDBusMessage question = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.portal.Desktop"),
            QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
        question << QStringLiteral("test") << QStringLiteral("test");
        const QDBusPendingCallWatcher watcher(program.asyncCall(question));
        QSignalSpy answered(&watcher, &QDBusPendingCallWatcher::finished);
        EXPECT_TRUE(waitUntil([&] { return !answered.isEmpty(); }));
    }

    PrivateBus bus;
    QDBusConnection program = bus.connect(QStringLiteral("program"));
    std::unique_ptr<FakeSettingsPortal> portal;
};

} // namespace

TEST_F(DesktopColorSchemeTest, PortalSaysDark_IsTakenWhenItAnswers) {
    startPortal(dark);
    const DesktopColorScheme scheme(program);
    QSignalSpy changed(&scheme, &ColorScheme::changed);
    EXPECT_FALSE(scheme.isDark()); // the palette's, for nobody waits
    EXPECT_TRUE(waitUntil([&] { return scheme.isDark(); }));
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(DesktopColorSchemeTest, PortalSaysLight_WinsOverADarkPalette) {
    setPalette(Qt::black, Qt::white);
    startPortal(light);
    const DesktopColorScheme scheme(program);
    EXPECT_TRUE(scheme.isDark());
    EXPECT_TRUE(waitUntil([&] { return !scheme.isDark(); }));
    setPalette(Qt::darkGray, Qt::white);
    EXPECT_FALSE(scheme.isDark());
}

TEST_F(DesktopColorSchemeTest, PortalAgreesWithThePalette_NothingChanges) {
    startPortal(light);
    const DesktopColorScheme scheme(program);
    QSignalSpy changed(&scheme, &ColorScheme::changed);
    settle();
    EXPECT_FALSE(scheme.isDark());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(DesktopColorSchemeTest, ChangesOfThePreference_AreFollowed) {
    startPortal(noPreference);
    const DesktopColorScheme scheme(program);
    QSignalSpy changed(&scheme, &ColorScheme::changed);
    settle();
    portal->changeColorScheme(dark);
    EXPECT_TRUE(waitUntil([&] { return scheme.isDark(); }));
    portal->changeColorScheme(light);
    EXPECT_TRUE(waitUntil([&] { return !scheme.isDark(); }));
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(DesktopColorSchemeTest, NoPreference_LeavesItToThePalette) {
    startPortal(noPreference);
    const DesktopColorScheme scheme(program);
    settle();
    EXPECT_FALSE(scheme.isDark());
    QSignalSpy changed(&scheme, &ColorScheme::changed);
    setPalette(Qt::black, Qt::white);
    EXPECT_TRUE(scheme.isDark());
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(DesktopColorSchemeTest, PreferenceTakenBack_LeavesItToThePaletteAgain) {
    startPortal(dark);
    const DesktopColorScheme scheme(program);
    ASSERT_TRUE(waitUntil([&] { return scheme.isDark(); }));
    portal->changeColorScheme(noPreference);
    EXPECT_TRUE(waitUntil([&] { return !scheme.isDark(); }));
}

TEST_F(DesktopColorSchemeTest, OtherSettings_AreNoPreference) {
    startPortal(noPreference);
    const DesktopColorScheme scheme(program);
    settle();
    portal->change(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast"), dark);
    portal->change(QStringLiteral("org.example.interface"), QStringLiteral("color-scheme"), dark);
    settle();
    EXPECT_FALSE(scheme.isDark());
}

TEST_F(DesktopColorSchemeTest, PortalAbsent_ThePaletteDecidesUntilOneComes) {
    const DesktopColorScheme scheme(program);
    EXPECT_FALSE(scheme.isDark());
    setPalette(Qt::black, Qt::white);
    EXPECT_TRUE(scheme.isDark());
    startPortal(noPreference);
    portal->changeColorScheme(light);
    EXPECT_TRUE(waitUntil([&] { return !scheme.isDark(); }));
}

TEST_F(DesktopColorSchemeTest, PortalNeverAnswers_ThePaletteDecides) {
    startPortal(dark);
    portal->answers = false;
    const DesktopColorScheme scheme(program);
    EXPECT_TRUE(waitUntil([this] { return portal->questions == 1; }));
    EXPECT_FALSE(scheme.isDark());
    setPalette(Qt::black, Qt::white);
    EXPECT_TRUE(scheme.isDark());
}

TEST_F(DesktopColorSchemeTest, NoBusAtAll_ThePaletteDecides) {
    const DesktopColorScheme scheme(QDBusConnection(QStringLiteral("nowhere")));
    EXPECT_FALSE(scheme.isDark());
    setPalette(Qt::black, Qt::white);
    EXPECT_TRUE(scheme.isDark());
}
