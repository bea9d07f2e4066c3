#include "core/hotkey_monitor.h"
#include "support/fake_event_tap.h"
#include "support/hand_loop.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr int keySpace = 49;
constexpr int keyP = 35;
constexpr quint64 control = modifier::control | modifier::leftControl;
constexpr quint64 rightOption = modifier::option | modifier::rightOption;

class HotkeyMonitorSuspension : public testing::Test {
protected:
    HotkeyMonitorSuspension() {
        monitor.onPress = [this] { reports += QLatin1Char('+'); };
        monitor.onRelease = [this] { reports += QLatin1Char('-'); };
        chooseChord(keySpace, modifier::control);
    }

    void chooseChord(int keyCode, quint64 mask) {
        defaults.set(QStringLiteral("hotkeyCustomKeyCode"), qint64{keyCode});
        defaults.set(QStringLiteral("hotkeyCustomMask"), static_cast<qint64>(mask));
    }
    void startWith(const QString& hotkey) {
        defaults.set(QStringLiteral("hotkey"), hotkey);
        monitor.start();
        loop.runPosted();
    }
    void startWithChord() { startWith(QStringLiteral("custom")); }
    void expectReports(const char* expected) {
        loop.runPosted();
        EXPECT_EQ(reports, QLatin1String(expected));
    }
    void pressChord() {
        keyboard.flagsChanged(control);
        keyboard.keyDown(keySpace, control);
    }
    void releaseChord() {
        keyboard.keyUp(keySpace, control);
        keyboard.flagsChanged(0);
    }

    HandLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    FakeEventTapFactory keyboard;
    HotkeyMonitor monitor{loop, defaults, keyboard};
    QString reports; // + for a press, - for a release
};

} // namespace

TEST_F(HotkeyMonitorSuspension, ChordPressedMeanwhile_IsNotReportedAndPasses) {
    startWithChord();
    monitor.setSuspended(true);
    EXPECT_EQ(keyboard.keyDown(keySpace, control), EventVerdict::Pass);
    EXPECT_EQ(keyboard.keyUp(keySpace, control), EventVerdict::Pass);
    expectReports("");
}

TEST_F(HotkeyMonitorSuspension, ModifierPressedMeanwhile_IsNotReported) {
    startWith(QStringLiteral("ralt"));
    monitor.setSuspended(true);
    keyboard.flagsChanged(rightOption);
    keyboard.flagsChanged(0);
    expectReports("");
}

TEST_F(HotkeyMonitorSuspension, ChordHeld_IsReportedReleasedOnce) {
    startWithChord();
    pressChord();
    monitor.setSuspended(true);
    expectReports("+-");
    EXPECT_FALSE(monitor.isHotkeyDown());
    releaseChord();
    expectReports("+-");
}

TEST_F(HotkeyMonitorSuspension, ModifierHeld_IsReportedReleasedOnce) {
    startWith(QStringLiteral("ralt"));
    keyboard.flagsChanged(rightOption);
    monitor.setSuspended(true);
    keyboard.flagsChanged(rightOption | control);
    keyboard.flagsChanged(0);
    expectReports("+-");
}

TEST_F(HotkeyMonitorSuspension, NothingHeld_ReportsNoRelease) {
    startWithChord();
    monitor.setSuspended(true);
    monitor.setSuspended(false);
    expectReports("");
}

TEST_F(HotkeyMonitorSuspension, Claim_IsGivenUpAndTakenAgain) {
    startWithChord();
    EXPECT_EQ(keyboard.claimed, (KeyChord{keySpace, modifier::control}));
    monitor.setSuspended(true);
    EXPECT_EQ(keyboard.claimed, std::nullopt);
    monitor.setSuspended(false);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keySpace, modifier::control}));
}

TEST_F(HotkeyMonitorSuspension, HotkeyChangedMeanwhile_IsClaimedAtTheEndOnly) {
    startWithChord();
    monitor.setSuspended(true);
    chooseChord(keyP, modifier::command);
    EXPECT_EQ(keyboard.claimed, std::nullopt);
    monitor.setSuspended(false);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keyP, modifier::command}));
}

TEST_F(HotkeyMonitorSuspension, BeforeTheStart_NothingIsClaimedUntilTheEnd) {
    monitor.setSuspended(true);
    startWithChord();
    EXPECT_EQ(keyboard.claimed, std::nullopt);
    monitor.setSuspended(false);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keySpace, modifier::control}));
}

TEST_F(HotkeyMonitorSuspension, AfterTheEnd_ChordAndModifiersWorkAgain) {
    startWithChord();
    monitor.setSuspended(true);
    monitor.setSuspended(false);
    pressChord();
    expectReports("+");
    releaseChord();
    expectReports("+-");
    defaults.set(QStringLiteral("hotkey"), QStringLiteral("ralt"));
    keyboard.flagsChanged(rightOption);
    keyboard.flagsChanged(0);
    expectReports("+-+-");
}

TEST_F(HotkeyMonitorSuspension, CapturedChordStillDownAtTheEnd_ItsRepeatsDoNotPress) {
    startWithChord();
    monitor.setSuspended(true);
    keyboard.flagsChanged(control);
    keyboard.keyDown(keyP, control);
    monitor.setSuspended(false);
    chooseChord(keyP, modifier::control);
    EXPECT_EQ(keyboard.keyDown(keyP, control), EventVerdict::Pass);
    EXPECT_EQ(keyboard.keyUp(keyP, control), EventVerdict::Pass);
    expectReports("");
    keyboard.keyDown(keyP, control); // with Control still down
    expectReports("+");
}

TEST_F(HotkeyMonitorSuspension, ChordHeldThroughout_ItsRepeatsDoNotPress) {
    startWithChord();
    pressChord();
    monitor.setSuspended(true);
    monitor.setSuspended(false);
    keyboard.keyDown(keySpace, control);
    releaseChord();
    expectReports("+-");
    pressChord();
    expectReports("+-+");
}

TEST_F(HotkeyMonitorSuspension, ModifierHeldThroughout_CountsOnlyWhenPressedAnew) {
    startWith(QStringLiteral("ralt"));
    keyboard.flagsChanged(rightOption);
    monitor.setSuspended(true);
    monitor.setSuspended(false);
    keyboard.flagsChanged(rightOption | control);
    expectReports("+-");
    keyboard.flagsChanged(control);
    keyboard.flagsChanged(rightOption | control);
    expectReports("+-+");
}

TEST_F(HotkeyMonitorSuspension, SuspendedTwice_EndsWithOneEnd) {
    startWithChord();
    monitor.setSuspended(true);
    monitor.setSuspended(true);
    monitor.setSuspended(false);
    pressChord();
    expectReports("+");
}
