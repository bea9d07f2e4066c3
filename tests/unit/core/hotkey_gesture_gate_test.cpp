#include "core/hotkey_gesture_gate.h"
#include "support/hand_loop.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using velmora::test::HandLoop;

namespace {

class HotkeyGestureGateTest : public testing::Test {
protected:
    HotkeyGestureGateTest() {
        gate.onStart = [this] { commands += QLatin1Char('+'); };
        gate.onStop = [this] { commands += QLatin1Char('-'); };
    }

    void tap() {
        gate.press();
        loop.advance(50ms);
        gate.release();
    }
    void latch() {
        tap();
        loop.advance(100ms);
        tap();
    }

    HandLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    AppSettings settings{defaults};
    HotkeyGestureGate gate{loop, settings};
    QString commands; // + for start, - for stop
    const QString toggle = QStringLiteral("toggle");
};

} // namespace

TEST_F(HotkeyGestureGateTest, Hold_StartsAtThePressAndStopsAtTheRelease) {
    gate.press();
    EXPECT_EQ(commands, QStringLiteral("+"));
    loop.advance(3s);
    gate.release();
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, HoldOfExactlyTheThreshold_IsAHold) {
    gate.press();
    loop.advance(220ms);
    gate.release();
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, LoneTap_StopsWhenTheWindowExpires) {
    gate.press();
    loop.advance(219ms);
    gate.release();
    loop.advance(319ms);
    EXPECT_EQ(commands, QStringLiteral("+"));
    loop.advance(1ms);
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, DoubleTap_LatchesUntilTheNextPress) {
    latch();
    loop.advance(60s);
    EXPECT_EQ(commands, QStringLiteral("+"));
    gate.press();
    EXPECT_EQ(commands, QStringLiteral("+-"));
    gate.release();
    loop.advance(1s);
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, SecondTapHeldLong_LatchesOnlyAtItsRelease) {
    tap();
    gate.press();
    loop.advance(10s);
    EXPECT_EQ(commands, QStringLiteral("+"));
    gate.release();
    EXPECT_EQ(commands, QStringLiteral("+"));
    gate.press();
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, SecondPressAt310ms_IsADoubleTap) {
    tap();
    loop.advance(310ms);
    gate.press();
    loop.advance(1s);
    EXPECT_EQ(commands, QStringLiteral("+"));
}

TEST_F(HotkeyGestureGateTest, SecondPressAt330ms_IsANewStart) {
    tap();
    loop.advance(330ms);
    gate.press();
    EXPECT_EQ(commands, QStringLiteral("+-+"));
}

TEST_F(HotkeyGestureGateTest, RepeatedPressWithoutRelease_HasNoEffect) {
    gate.press();
    gate.press();
    loop.advance(1s);
    gate.release();
    EXPECT_EQ(commands, QStringLiteral("+-"));
    commands.clear();
    tap();
    gate.press();
    gate.press();
    gate.release();
    EXPECT_EQ(commands, QStringLiteral("+"));
}

TEST_F(HotkeyGestureGateTest, PressRepeatedDuringAHold_DoesNotBeginItAnew) {
    gate.press();
    loop.advance(150ms);
    gate.press();
    loop.advance(100ms);
    gate.release(); // held for 250 ms in all: no tap
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, ReleaseWithoutPress_HasNoEffect) {
    gate.release();
    EXPECT_EQ(commands, QString());
    tap();
    gate.release();
    loop.advance(319ms);
    EXPECT_EQ(commands, QStringLiteral("+"));
    gate.press();
    gate.release();
    gate.release();
    loop.advance(1s);
    EXPECT_EQ(commands, QStringLiteral("+"));
}

TEST_F(HotkeyGestureGateTest, ToggleMode_EachPressSwitchesAndReleasesDoNothing) {
    settings.setMode(toggle);
    tap();
    loop.advance(5s);
    EXPECT_EQ(commands, QStringLiteral("+"));
    tap();
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, UnknownMode_BehavesAsHold) {
    settings.setMode(QStringLiteral("whatever"));
    gate.press();
    loop.advance(1s);
    gate.release();
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, ModeChangeWhileLatched_NextPressStopsInEitherMode) {
    latch();
    settings.setMode(toggle);
    gate.press();
    EXPECT_EQ(commands, QStringLiteral("+-"));
    gate.press(); // latched by toggle
    settings.setMode(QStringLiteral("push-to-talk"));
    gate.press();
    EXPECT_EQ(commands, QStringLiteral("+-+-"));
}

TEST_F(HotkeyGestureGateTest, ModeChangeToToggleInTheTapWindow_TimerStillStops) {
    tap();
    settings.setMode(toggle);
    loop.advance(320ms);
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, ModeChangeToToggleInTheTapWindow_PressStopsFirst) {
    tap();
    settings.setMode(toggle);
    loop.advance(100ms);
    gate.press();
    EXPECT_EQ(commands, QStringLiteral("+-"));
    loop.advance(1s);
    EXPECT_EQ(commands, QStringLiteral("+-"));
}

TEST_F(HotkeyGestureGateTest, Toggle_InHoldMode_StartsAndStopsWithoutAHold) {
    gate.toggle();
    loop.advance(10s);
    EXPECT_EQ(commands, QStringLiteral("+"));
    gate.toggle();
    EXPECT_EQ(commands, QStringLiteral("+-"));
    tap();
    gate.toggle(); // in the tap window: it stops, and the timer finds nothing more to do
    loop.advance(1s);
    EXPECT_EQ(commands, QStringLiteral("+-+-"));
}

TEST_F(HotkeyGestureGateTest, Callbacks_SeeTheStateAlreadyChanged) {
    gate.onStop = [this] {
        commands += QLatin1Char('-');
        if (commands.size() < 3)
            gate.press(); // finds idle, so it starts again
    };
    gate.press();
    loop.advance(1s);
    gate.release();
    EXPECT_EQ(commands, QStringLiteral("+-+"));
}
