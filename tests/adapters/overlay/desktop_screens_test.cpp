#include "plain_window.h"
#include "platform/linux/desktop_screens.h"
#include "support/desktop/wait_until.h"

#include <QGuiApplication>
#include <QProcess>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

// Splits the one screen of the virtual desktop into two monitors for as long as it lives.
class TwoMonitors {
public:
    TwoMonitors() {
        xrandr({QStringLiteral("--setmonitor"), QStringLiteral("left"), QStringLiteral("800/210x800/210+0+0"),
                QStringLiteral("screen")});
        xrandr({QStringLiteral("--setmonitor"), QStringLiteral("right"),
                QStringLiteral("480/130x800/210+800+0"), QStringLiteral("none")});
    }
    ~TwoMonitors() {
        xrandr({QStringLiteral("--delmonitor"), QStringLiteral("right")});
        xrandr({QStringLiteral("--delmonitor"), QStringLiteral("left")});
        waitUntil([] { return QGuiApplication::screens().size() == 1; });
    }
    TwoMonitors(const TwoMonitors&) = delete;
    TwoMonitors& operator=(const TwoMonitors&) = delete;

private:
    static void xrandr(const QStringList& arguments) {
        QProcess::execute(QStringLiteral("xrandr"), arguments);
    }
};

const QRect wholeScreen(0, 0, 1280, 800);

} // namespace

TEST(DesktopScreens, OneScreen_IsTheMainOne) {
    DesktopScreens screens;
    EXPECT_EQ(screens.mainScreen(), (ScreenArea{wholeScreen, wholeScreen, 0}));
    EXPECT_EQ(screens.screenAt({5, 5}), screens.mainScreen());
    EXPECT_EQ(screens.screenAt({5000, 5}), screens.mainScreen());
}

TEST(DesktopScreens, DockTakesTheTopEdge_TheVisibleFrameIsLower) {
    DesktopScreens screens;
    {
        const PlainWindow dock(PlainWindow::Kind::Dock, {0, 0, 1280, 30});
        EXPECT_TRUE(waitUntil([&] { return screens.mainScreen()->visibleFrame == QRect(0, 30, 1280, 770); }));
        EXPECT_EQ(screens.mainScreen()->frame, wholeScreen);
    }
    EXPECT_TRUE(waitUntil([&] { return screens.mainScreen()->visibleFrame == wholeScreen; }));
}

TEST(DesktopScreens, FocusOnTheSecondScreen_IsTheMainOne) {
    const TwoMonitors monitors;
    ASSERT_TRUE(waitUntil([] { return QGuiApplication::screens().size() == 2; }));
    DesktopScreens screens;
    const QRect right(800, 0, 480, 800);
    {
        const PlainWindow window(PlainWindow::Kind::Normal, {850, 100, 300, 200});
        EXPECT_TRUE(waitUntil([&] { return screens.mainScreen()->frame == right; }));
    }
    const PlainWindow window(PlainWindow::Kind::Normal, {100, 100, 300, 200});
    EXPECT_TRUE(waitUntil([&] { return screens.mainScreen()->frame == QRect(0, 0, 800, 800); }));
    EXPECT_EQ(screens.screenAt({1000, 5})->frame, right);
}

TEST(DesktopScreens, NoServerToAsk_IsThePrimaryScreen) {
    EXPECT_EQ(DesktopScreens(":987").mainScreen()->frame, wholeScreen);
}
