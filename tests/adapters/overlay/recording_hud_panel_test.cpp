#include "plain_window.h"
#include "support/desktop/key_window.h"
#include "support/desktop/wait_until.h"
#include "support/dictation_on_fakes.h"
#include "support/fake_color_scheme.h"
#include "support/fake_compositing.h"
#include "support/fake_screens.h"
#include "ui/hud/recording_hud_panel.h"
#include "ui/kit/v_theme.h"
#include "ui/qml_engine.h"

#include <QGuiApplication>
#include <QProcess>
#include <QQuickItem>

#include <gmock/gmock.h>
#include <xcb/shape.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class RecordingHUDPanelTest : public testing::Test {
protected:
    RecordingHUDPanelTest() { dictation.record(); }

    void showPanel() {
        panel = std::make_unique<RecordingHUDPanel>(engine, dictation.pipeline, dictation.settings,
                                                    dictation.defaults, screens, compositing);
        bringToFront();
    }
    /// What happens with every new state of the dictation.
    void bringToFront() {
        panel->reposition();
        panel->orderFrontRegardless();
        ASSERT_TRUE(waitUntil([&] { return panel->isExposed(); }));
        x.sync();
    }
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(panel->winId()); }
    [[nodiscard]] bool isBelowPanel(xcb_window_t other) {
        const std::vector<xcb_window_t> order = stackingOrder(x);
        const auto at = [&](xcb_window_t id) { return std::ranges::find(order, frameOf(x, id)); };
        return at(other) < at(window()) && at(window()) != order.end();
    }
    [[nodiscard]] QRect shape() {
        const XcbReply<xcb_shape_query_extents_reply_t> extents(
            xcb_shape_query_extents_reply(x.get(), xcb_shape_query_extents(x.get(), window()), nullptr));
        if (!extents)
            return {};
        return {extents->bounding_shape_extents_x, extents->bounding_shape_extents_y,
                extents->bounding_shape_extents_width, extents->bounding_shape_extents_height};
    }
    void click(const QPoint& point) {
        QProcess::execute(QStringLiteral("xdotool"),
                          {QStringLiteral("mousemove"), QString::number(point.x()),
                           QString::number(point.y()), QStringLiteral("click"), QStringLiteral("1")});
    }

    X11Connection x;
    DictationOnFakes dictation;
    FakeColorScheme scheme;
    VTheme theme{dictation.settings, scheme};
    UiEngine engine{[] { return makeQmlEngine(); }};
    FakeScreens screens;
    FakeCompositing compositing;
    std::unique_ptr<RecordingHUDPanel> panel;
};

} // namespace

TEST_F(RecordingHUDPanelTest, FreshInstallation_IsMediumAtTheTopAndHoldsTheSmallCapsule) {
    showPanel();
    EXPECT_EQ(geometryOf(x, window()), QRect(400, 16, 480, 66));
    EXPECT_EQ(panel->rootObject()->property("capsuleRect").toRectF().height(), 28);
    EXPECT_EQ(panel->rootObject()->property("capsuleRect").toRectF().center(), QPointF(240, 33));
}

TEST_F(RecordingHUDPanelTest, PositionAndSizeChanged_TakeEffectWithTheNextState) {
    showPanel();
    dictation.settings.setHudPosition(QStringLiteral("bottom"));
    dictation.settings.setHudSize(QStringLiteral("large"));
    EXPECT_EQ(geometryOf(x, window()), QRect(400, 16, 480, 66));
    bringToFront();
    EXPECT_TRUE(waitUntil([&] { return geometryOf(x, window()) == QRect(400, 718, 480, 76); }));
    dictation.settings.setHudPosition(QStringLiteral("top"));
    bringToFront();
    EXPECT_TRUE(waitUntil([&] { return geometryOf(x, window()) == QRect(400, 16, 480, 76); }));
}

TEST_F(RecordingHUDPanelTest, NoScreen_KeepsItsFrame) {
    showPanel();
    screens.screen.reset();
    dictation.settings.setHudPosition(QStringLiteral("bottom"));
    bringToFront();
    EXPECT_EQ(geometryOf(x, window()), QRect(400, 16, 480, 66));
}

TEST_F(RecordingHUDPanelTest, ShownAndShownAgain_TheFocusStaysWhereItWas) {
    KeyWindow editor;
    const uint32_t active = x.property32(x.root(), x.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    showPanel();
    bringToFront();
    bringToFront();
    panel->orderOut();
    panel.reset();
    EXPECT_EQ(editor.focusLosses(), 0);
    EXPECT_EQ(x.property32(x.root(), x.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW), active);
}

TEST_F(RecordingHUDPanelTest, ClickOnTheCapsule_GoesToTheWindowBelow) {
    PlainWindow below(PlainWindow::Kind::FullScreen);
    ASSERT_TRUE(waitUntil([&] { return geometryOf(x, below.id()) == QRect(0, 0, 1280, 800); }));
    showPanel();
    click(panel->geometry().center());
    EXPECT_TRUE(waitUntil([&] { return below.clicks() == 1; }));
}

TEST_F(RecordingHUDPanelTest, FullScreenWindow_LiesBelow) {
    const PlainWindow before(PlainWindow::Kind::FullScreen);
    ASSERT_TRUE(waitUntil([&] { return geometryOf(x, before.id()) == QRect(0, 0, 1280, 800); }));
    showPanel();
    EXPECT_TRUE(isBelowPanel(before.id()));
    const PlainWindow after(PlainWindow::Kind::FullScreen);
    ASSERT_TRUE(waitUntil([&] { return geometryOf(x, after.id()) == QRect(0, 0, 1280, 800); }));
    bringToFront();
    EXPECT_TRUE(waitUntil([&] { return isBelowPanel(after.id()); }));
}

TEST_F(RecordingHUDPanelTest, Shown_IsNoWindowOfTheTaskBar) {
    showPanel();
    const KeyWindow later; // the window manager has seen the panel by now
    const xcb_window_t id = window();
    EXPECT_FALSE(x.property(x.root(), x.atom("_NET_CLIENT_LIST"))
                     .contains(QByteArray(reinterpret_cast<const char*>(&id), sizeof id)));
}

TEST_F(RecordingHUDPanelTest, CompositorGoes_IsCutToTheCapsuleUntilItComesBack) {
    showPanel();
    EXPECT_EQ(shape(), QRect(0, 0, 480, 66));
    compositing.setActive(false);
    const QRect capsule = panel->rootObject()->property("capsuleRect").toRectF().toRect();
    EXPECT_TRUE(waitUntil([&] { return shape() == capsule; }));
    dictation.settings.setHudMinimal(false);
    EXPECT_TRUE(waitUntil([&] {
        return shape().width() > capsule.width() + 50 &&
               shape() == panel->rootObject()->property("capsuleRect").toRectF().toRect();
    }));
    compositing.setActive(true);
    EXPECT_TRUE(waitUntil([&] { return shape() == QRect(0, 0, 480, 66); }));
}

TEST_F(RecordingHUDPanelTest, OrderedOut_IsGone) {
    showPanel();
    const xcb_window_t id = window();
    panel->orderOut();
    EXPECT_FALSE(panel->isVisible());
    panel.reset();
    EXPECT_TRUE(waitUntil([&] { return geometryOf(x, id).isEmpty(); }));
}

TEST_F(RecordingHUDPanelTest, Prewarmed_NothingIsShownAndTheNextPanelIsAsAlways) {
    RecordingHUDPanel::prewarm(engine, dictation.pipeline, dictation.settings, dictation.defaults, screens,
                               compositing);
    EXPECT_TRUE(QGuiApplication::topLevelWindows().isEmpty());
    showPanel();
    EXPECT_EQ(geometryOf(x, window()), QRect(400, 16, 480, 66));
}
