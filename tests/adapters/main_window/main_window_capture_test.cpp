#include "platform/linux/x11_key_event_monitors.h"
#include "support/desktop/physical_keyboard.h"
#include "support/desktop/wait_until.h"
#include "support/main_window_stage.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr xcb_keycode_t digit2 = 11;

class MainWindowCaptureTest : public testing::Test, protected MainWindowStage {
protected:
    void pressControl2() {
        hand.press(key::leftControl);
        hand.tap(digit2);
        hand.release(key::leftControl);
    }

    PhysicalKeyboard hand;
};

} // namespace

TEST_F(MainWindowCaptureTest, WhileKeysAreWatched_TheWindowStaysActiveAndItsShortcutsAreQuiet) {
    MainWindow& opened = openWindow();
    ASSERT_TRUE(waitUntil([&] { return opened.isActive() && opened.isExposed(); }));
    const QSignalSpy activations(&opened, &QWindow::activeChanged);
    X11KeyEventMonitors keyboard;
    int keysDown = 0;
    auto monitor = keyboard.addMonitor(KeyEvent::Kind::KeyDown, [&](const KeyEvent&) { ++keysDown; });
    ASSERT_TRUE(monitor);
    pressControl2();
    EXPECT_TRUE(waitUntil([&] { return keysDown == 1; }));
    monitor.reset();
    EXPECT_TRUE(waitUntil([] { return X11KeyboardGrab::take({}) != nullptr; }));
    EXPECT_EQ(nav.screen(), MainScreen::History);
    pressControl2();
    EXPECT_TRUE(waitUntil([&] { return nav.screen() == MainScreen::Meetings; }));
    EXPECT_TRUE(opened.isActive());
    EXPECT_EQ(activations.size(), 0);
}
