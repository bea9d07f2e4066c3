#include "hotkey_monitor_fixture.h"

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr int keySpace = 49;
constexpr int keyP = 35;
constexpr quint64 control = modifier::control | modifier::leftControl;
constexpr quint64 rightOption = modifier::option | modifier::rightOption;

class HotkeyMonitorSuspension : public HotkeyMonitorFixture {
protected:
    HotkeyMonitorSuspension() { chooseChord(keySpace, modifier::control); }

    void startWithTheChord() { startWith(QStringLiteral("custom")); }
    void pressChord() {
        keyboard.flagsChanged(control);
        keyboard.keyDown(keySpace, control);
    }
    void releaseChord() {
        keyboard.keyUp(keySpace, control);
        keyboard.flagsChanged(0);
    }
};

} // namespace

TEST_F(HotkeyMonitorSuspension, ChordPressedMeanwhile_IsNotReportedAndPasses) {
    startWithTheChord();
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
    startWithTheChord();
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

TEST_F(HotkeyMonitorSuspension, ModifierHeldAndAnotherChosen_TheOtherWorks) {
    startWith(QStringLiteral("ralt"));
    keyboard.flagsChanged(rightOption);
    monitor.setSuspended(true);
    keyboard.flagsChanged(0);
    defaults.set(QStringLiteral("hotkey"), QStringLiteral("rcmd"));
    monitor.setSuspended(false);
    keyboard.flagsChanged(modifier::rightCommand);
    expectReports("+-+");
}

TEST_F(HotkeyMonitorSuspension, NothingHeld_ReportsNoRelease) {
    startWithTheChord();
    monitor.setSuspended(true);
    monitor.setSuspended(false);
    expectReports("");
}

TEST_F(HotkeyMonitorSuspension, Claim_IsGivenUpAndTakenAgain) {
    startWithTheChord();
    EXPECT_EQ(keyboard.claimed, (KeyChord{keySpace, modifier::control}));
    monitor.setSuspended(true);
    EXPECT_EQ(keyboard.claimed, std::nullopt);
    monitor.setSuspended(false);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keySpace, modifier::control}));
}

TEST_F(HotkeyMonitorSuspension, HotkeyChangedMeanwhile_IsClaimedAtTheEndOnly) {
    startWithTheChord();
    monitor.setSuspended(true);
    chooseChord(keyP, modifier::command);
    EXPECT_EQ(keyboard.claimed, std::nullopt);
    monitor.setSuspended(false);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keyP, modifier::command}));
}

TEST_F(HotkeyMonitorSuspension, BeforeTheStart_NothingIsClaimedUntilTheEnd) {
    monitor.setSuspended(true);
    startWithTheChord();
    EXPECT_EQ(keyboard.claimed, std::nullopt);
    monitor.setSuspended(false);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keySpace, modifier::control}));
}

TEST_F(HotkeyMonitorSuspension, AfterTheEnd_ChordAndModifiersWorkAgain) {
    startWithTheChord();
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
    startWithTheChord();
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
    startWithTheChord();
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
    startWithTheChord();
    monitor.setSuspended(true);
    monitor.setSuspended(true);
    monitor.setSuspended(false);
    pressChord();
    expectReports("+");
}
