#include "platform/linux/x11_connection.h"
#include "support/desktop/wait_until.h"
#include "support/main_window_stage.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class MainWindowDragTest : public testing::Test, protected MainWindowStage {
protected:
    static void xdotool(const QStringList& arguments) {
        QProcess pointer;
        pointer.start(QStringLiteral("xdotool"), arguments);
        ASSERT_TRUE(waitUntil([&] { return pointer.state() == QProcess::NotRunning; }));
        ASSERT_EQ(pointer.exitCode(), 0);
    }
    static void moveTo(QPoint point) {
        xdotool({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())});
    }
    /// Where the X server has the window's content; Qt hears of it when the move is over.
    [[nodiscard]] QPoint place() {
        const auto id = static_cast<xcb_window_t>(window->winId());
        const XcbReply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
            x.get(), xcb_translate_coordinates(x.get(), id, x.root(), 0, 0), nullptr));
        return corner ? QPoint(corner->dst_x, corner->dst_y) : QPoint();
    }

    X11Connection x;
};

} // namespace

TEST_F(MainWindowDragTest, BackgroundDragged_TheWindowComesAlongUntilTheButtonIsLeft) {
    MainWindow& opened = openWindow();
    ASSERT_TRUE(waitUntil([&] { return opened.isActive() && opened.isExposed(); }));
    const QPoint before = place();
    const QPoint grip = before + QPoint(116, 400); // the sidebar's middle
    moveTo(grip);
    xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
    int way = 0; // on and on: the window manager takes over somewhere on it
    EXPECT_TRUE(waitUntil([&] {
        way += 5;
        moveTo(grip + QPoint(way, way) / 2);
        const QPoint moved = place() - before;
        return moved.x() > 20 && moved.y() > 20;
    }));
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});

    // A key gets through: the window manager has let go of pointer and keyboard.
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+2")});
    EXPECT_TRUE(waitUntil([&] { return nav.screen() == MainScreen::Meetings; }));
    const QPoint dropped = place();
    moveTo(grip);
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+1")});
    EXPECT_TRUE(waitUntil([&] { return nav.screen() == MainScreen::History; }));
    EXPECT_EQ(place(), dropped);
}

TEST_F(MainWindowDragTest, ButtonOfTheSidebarDragged_TheWindowStays) {
    MainWindow& opened = openWindow();
    ASSERT_TRUE(waitUntil([&] { return opened.isActive() && opened.isExposed(); }));
    const QPoint before = place();
    const QPoint grip = before + QPoint(116, 96); // "История"
    moveTo(grip);
    xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
    moveTo(grip + QPoint(30, 30));
    moveTo(grip + QPoint(60, 60));
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+2")});
    EXPECT_TRUE(waitUntil([&] { return nav.screen() == MainScreen::Meetings; }));
    EXPECT_EQ(place(), before);
}
