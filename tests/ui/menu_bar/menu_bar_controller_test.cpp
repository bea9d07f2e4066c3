#include "support/dictation_on_fakes.h"
#include "support/fake_click_watch.h"
#include "support/fake_color_scheme.h"
#include "support/fake_compositing.h"
#include "support/fake_event_tap.h"
#include "support/fake_privacy_rights.h"
#include "support/fake_screens.h"
#include "support/fake_status_item.h"
#include "support/ui/view_host.h"
#include "support/wait.h"
#include "ui/menu_bar/menu_bar_controller.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

class MenuBarControllerTest : public testing::Test, protected DictationOnFakes {
protected:
    MenuBarControllerTest() {
        hotkey.start();
        loop.runPosted();
    }

    [[nodiscard]] MenuBarPopupPanel* panel() const { return controller.popupPanel(); }
    [[nodiscard]] bool isOpen() const { return panel() != nullptr; }
    void open() {
        statusItem.click();
        ASSERT_TRUE(isOpen() && QTest::qWaitForWindowActive(panel(), 30'000));
    }
    [[nodiscard]] QRect popupOnScreen() const {
        return QRectF(panel()->position() + panel()->view().position(), panel()->view().size()).toRect();
    }
    /// The texts of the rows that the popup offers.
    [[nodiscard]] QStringList rows() const {
        QStringList names;
        collectRows(&panel()->view(), names);
        return names;
    }
    static void collectRows(QQuickItem* item, QStringList& names) {
        if (item->isVisible() && accessibleRole(item) == QAccessible::MenuItem)
            names.append(accessibleName(item));
        for (QQuickItem* child : item->childItems())
            collectRows(child, names);
    }
    void grantAll() { rights.granted = {PrivacyRight::InputMonitoring, PrivacyRight::Accessibility}; }
    void chooseFirst() {
        QTest::keyClick(panel(), Qt::Key_Down);
        QTest::keyClick(panel(), Qt::Key_Return);
    }
    [[nodiscard]] bool closes() {
        return waitUntil([this] { return !isOpen(); });
    }

    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    FakeEventTapFactory taps;
    HotkeyMonitor hotkey{loop, defaults, taps};
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    FakeStatusItem statusItem;
    FakeScreens screens;
    FakeCompositing compositing;
    FakeClickWatch clicks;
    UiEngine engine{makeQmlEngine};
    MenuBarController controller{
        {pipeline, hotkey, perms, settings, statusItem, screens, compositing, clicks, engine, loop}};
};

} // namespace

TEST_F(MenuBarControllerTest, Made_LoadsNoViews) {
    EXPECT_FALSE(engine.isMade());
    EXPECT_EQ(statusItem.image.size(), 2);
    controller.prewarm();
    EXPECT_TRUE(engine.isMade());
    EXPECT_FALSE(isOpen());
}

TEST_F(MenuBarControllerTest, Click_OpensAndTheNextCloses) {
    open();
    EXPECT_TRUE(panel()->isVisible());
    statusItem.click();
    EXPECT_FALSE(isOpen());
    statusItem.click();
    EXPECT_TRUE(isOpen());
}

TEST_F(MenuBarControllerTest, NoTray_AClickDoesNothing) {
    statusItem.moveTo({});
    statusItem.click();
    EXPECT_FALSE(isOpen());
}

TEST_F(MenuBarControllerTest, Opened_StandsBelowTheIconInsideTheScreen) {
    statusItem.moveTo(QRect(1250, 1, 22, 22));
    open();
    const QRect popup = popupOnScreen();
    EXPECT_EQ(popup.width(), 320);
    EXPECT_EQ(popup.x() + popup.width(), 1272);
    EXPECT_EQ(popup.y(), 28);
    EXPECT_TRUE(screens.screen->visibleFrame.contains(panel()->geometry()));
}

TEST_F(MenuBarControllerTest, WithoutACompositor_TheWindowIsCutToThePopup) {
    compositing.setActive(false);
    open();
    EXPECT_EQ(panel()->geometry(), popupOnScreen());
    EXPECT_FALSE(panel()->mask().contains(QPoint(0, 0)));
    EXPECT_TRUE(panel()->mask().contains(QPoint(160, 1)));
    EXPECT_FALSE(panel()->mask().contains(QPoint(319, panel()->height() - 1)));
}

TEST_F(MenuBarControllerTest, CompositorComesOrGoes_ThePopupCloses) {
    open();
    compositing.setActive(false);
    EXPECT_FALSE(isOpen());
}

TEST_F(MenuBarControllerTest, Opening_LooksAtTheRightsAnew) {
    rights.granted.clear();
    open();
    EXPECT_EQ(rows().value(0), QStringLiteral("Глобальная запись выключена"));
    statusItem.click();
    grantAll();
    open();
    EXPECT_EQ(rows().value(0), QStringLiteral("Записать"));
}

TEST_F(MenuBarControllerTest, EachRow_ClosesAndCallsItsCallback) {
    QStringList calls;
    const auto note = [&](const char* name) {
        return [&calls, this, name] {
            EXPECT_FALSE(isOpen()) << name;
            calls.append(QLatin1String(name));
        };
    };
    controller.onTestRecord = note("test");
    controller.onShowHistory = note("history");
    controller.onShowMeetings = note("meetings");
    controller.onShowSettings = note("settings");
    controller.onShowAbout = note("about");
    controller.onQuit = note("quit");
    grantAll();
    for (int row = 0; row < 6; ++row) {
        open();
        for (int down = 0; down <= row; ++down)
            QTest::keyClick(panel(), Qt::Key_Down);
        QTest::keyClick(panel(), Qt::Key_Return);
        ASSERT_TRUE(closes());
    }
    EXPECT_EQ(calls,
              QStringList({QStringLiteral("test"), QStringLiteral("history"), QStringLiteral("meetings"),
                           QStringLiteral("settings"), QStringLiteral("about"), QStringLiteral("quit")}));
}

TEST_F(MenuBarControllerTest, WarningRow_ShowsThePermissions) {
    int shown = 0;
    controller.onShowPermissions = [&] { ++shown; };
    rights.granted.clear();
    open();
    chooseFirst();
    ASSERT_TRUE(closes());
    EXPECT_EQ(shown, 1);
}

TEST_F(MenuBarControllerTest, RowChosenTwiceAtOnce_CallsBackOnce) {
    int calls = 0;
    controller.onTestRecord = [&] { ++calls; };
    grantAll();
    open();
    QTest::keyClick(panel(), Qt::Key_Down);
    for (int i = 0; i < 2; ++i) { // without a turn of the loop between
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, {});
        QCoreApplication::sendEvent(panel(), &enter);
    }
    ASSERT_TRUE(closes());
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST_F(MenuBarControllerTest, RowWithoutACallback_JustCloses) {
    open();
    chooseFirst();
    EXPECT_TRUE(closes());
}

TEST_F(MenuBarControllerTest, Escape_Closes) {
    open();
    QTest::keyClick(panel(), Qt::Key_Escape);
    EXPECT_TRUE(closes());
}

TEST_F(MenuBarControllerTest, AnotherWindowGetsTheFocus_Closes) {
    open();
    QWindow other;
    other.show();
    other.requestActivate();
    EXPECT_TRUE(closes());
}

TEST_F(MenuBarControllerTest, ClickOnTheShadow_Closes) {
    open();
    QTest::mouseClick(panel(), Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_TRUE(closes());
}

TEST_F(MenuBarControllerTest, PressedElsewhereWhileItHasNoFocus_Closes) {
    statusItem.click();
    statusItem.underPointer = false;
    clicks.press(panel()->geometry().bottomRight() + QPoint(5, 5));
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(clicks.enabled);
}

TEST_F(MenuBarControllerTest, PressedInItOrOnTheIcon_IsLeftToThem) {
    statusItem.click();
    statusItem.underPointer = false;
    clicks.press(panel()->geometry().center());
    EXPECT_TRUE(isOpen());
    statusItem.underPointer = true;
    clicks.press(statusItem.frame()->center());
    EXPECT_TRUE(isOpen());
}

TEST_F(MenuBarControllerTest, SecondClickTakesTheFocusFirst_DoesNotOpenAgain) {
    open();
    QWindow tray;
    tray.show();
    tray.requestActivate();
    ASSERT_TRUE(closes());
    loop.advance(50ms);
    statusItem.click();
    EXPECT_FALSE(isOpen());
    statusItem.click();
    EXPECT_TRUE(isOpen());
}

TEST_F(MenuBarControllerTest, ClickedElsewhereAndAtOnceOnTheIcon_OpensAgain) {
    open();
    statusItem.underPointer = false;
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(closes());
    statusItem.click();
    EXPECT_TRUE(isOpen());
}

TEST_F(MenuBarControllerTest, ClickLongAfterTheFocusWentElsewhere_Opens) {
    open();
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(closes());
    loop.advance(1s);
    statusItem.click();
    EXPECT_TRUE(isOpen());
}

TEST_F(MenuBarControllerTest, ControllerGoneWhileOpen_TakesThePopupAlong) {
    auto other = std::make_unique<MenuBarController>(MenuBarController::Neighbours{
        pipeline, hotkey, perms, settings, statusItem, screens, compositing, clicks, engine, loop});
    other->openPopup();
    const QPointer<MenuBarPopupPanel> popup = other->popupPanel();
    ASSERT_TRUE(popup);
    other.reset();
    EXPECT_TRUE(popup.isNull());
}
