#include "embedding_tray.h"
#include "platform/linux/desktop_screens.h"
#include "platform/linux/tray_status_item.h"
#include "platform/linux/x11_click_watch.h"
#include "platform/linux/x11_compositing.h"
#include "pointer_hand.h"
#include "support/desktop/physical_keyboard.h"
#include "support/dictation_on_fakes.h"
#include "support/fake_color_scheme.h"
#include "support/fake_event_tap.h"
#include "support/fake_privacy_rights.h"
#include "ui/kit/v_theme.h"
#include "ui/menu_bar/menu_bar_controller.h"
#include "ui/qml_engine.h"

#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

/// Another program's window, as far as the popup is concerned.
class PressedWindow : public QWindow {
public:
    PressedWindow() {
        setGeometry(100, 300, 200, 200);
        show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this, 30'000));
    }

    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

class PopupAtTrayTest : public testing::Test, protected DictationOnFakes {
protected:
    void SetUp() override {
        tray.start();
        ASSERT_TRUE(EmbeddingTray::takes(item));
    }

    /// With another button each time: no two make a double click.
    void clickIcon() const {
        static int clicks = 0;
        constexpr std::array buttons{PointerHand::Left, PointerHand::Right};
        hand.click(item.frame()->center(), buttons[static_cast<std::size_t>(clicks++) % buttons.size()]);
    }
    [[nodiscard]] bool opens() {
        return waitUntil([this] { return controller.popupPanel() && controller.popupPanel()->isActive(); });
    }
    [[nodiscard]] bool closes() {
        return waitUntil([this] { return !controller.popupPanel(); });
    }
    [[nodiscard]] QRect popup() const {
        const MenuBarPopupPanel& panel = *controller.popupPanel();
        return QRectF(panel.position() + panel.view().position(), panel.view().size()).toRect();
    }

    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    FakeEventTapFactory taps;
    HotkeyMonitor hotkey{loop, defaults, taps};
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    EmbeddingTray tray;
    TrayStatusItem item;
    DesktopScreens screens;
    X11Compositing compositing;
    X11ClickWatch clickWatch;
    UiEngine engine{makeQmlEngine};
    MenuBarController controller{
        {pipeline, hotkey, perms, settings, item, screens, compositing, clickWatch, engine, loop}};
    PointerHand hand;
};

} // namespace

TEST_F(PopupAtTrayTest, ClickOnTheIcon_OpensBelowItInsideTheScreenWithTheKeyboard) {
    clickIcon();
    ASSERT_TRUE(opens());
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_TRUE(waitUntil([&] { return popup().x() + popup().width() == screen.width() - 8; }))
        << popup().x();
    EXPECT_GT(popup().y(), item.frame()->y());
    EXPECT_TRUE(screen.contains(popup()));
}

TEST_F(PopupAtTrayTest, SecondClickOnTheIcon_ClosesAndDoesNotOpenAgain) {
    int openings = 0;
    const auto counting =
        QObject::connect(qApp, &QGuiApplication::focusWindowChanged, [&openings](const QWindow* window) {
            openings += qobject_cast<const MenuBarPopupPanel*>(window) ? 1 : 0;
        });
    PressedWindow other;
    clickIcon();
    ASSERT_TRUE(opens());
    clickIcon();
    ASSERT_TRUE(closes());
    // Clicks come in their order: behind this one nothing of the one before is still on its way.
    hand.click(other.geometry().center(), PointerHand::Left);
    ASSERT_TRUE(waitUntil([&other] { return other.presses > 0; }));
    EXPECT_FALSE(controller.popupPanel());
    EXPECT_EQ(openings, 1);
    QObject::disconnect(counting);
}

TEST_F(PopupAtTrayTest, ClickIntoAnotherWindow_Closes) {
    const PressedWindow other;
    clickIcon();
    ASSERT_TRUE(opens());
    hand.click(other.geometry().center(), PointerHand::Left);
    EXPECT_TRUE(closes());
}

TEST_F(PopupAtTrayTest, EscapeKey_Closes) {
    clickIcon();
    ASSERT_TRUE(opens());
    PhysicalKeyboard keyboard;
    keyboard.tap(key::escape);
    EXPECT_TRUE(closes());
}
