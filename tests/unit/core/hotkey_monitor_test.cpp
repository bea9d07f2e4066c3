#include "foundation/log.h"
#include "hotkey_monitor_fixture.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

constexpr int keySpace = 49;
constexpr int keyP = 35;
constexpr int keyF5 = 96;

const QString attempting = QStringLiteral("[Velmora] HotkeyMonitor.start: attempting CGEvent tap creation");
const QString active = QStringLiteral("[Velmora] HotkeyMonitor.start: tap active");
const QString failed =
    QStringLiteral("[Velmora] CGEvent tap failed — Input Monitoring/Accessibility permission missing?");
const QString reenabled = QStringLiteral("[Velmora] HotkeyMonitor.ensureEnabled: re-enabled disabled tap");

class HotkeyMonitorTest : public HotkeyMonitorFixture {
protected:
    QStringList lines;
    LogCapture capture{[this](const QString& line) { lines.append(line); }};
};

} // namespace

TEST_F(HotkeyMonitorTest, Start_TapCreated_IsActiveAndLogged) {
    monitor.start();
    loop.runPosted();
    EXPECT_TRUE(monitor.isActive());
    EXPECT_THAT(keyboard.attempts, ElementsAre(EventTapMode::Active));
    EXPECT_EQ(lines, (QStringList{attempting, active}));
    monitor.start();
    EXPECT_EQ(keyboard.attempts.size(), 1U);
}

TEST_F(HotkeyMonitorTest, Start_ActiveRefused_FallsBackToListenOnly) {
    keyboard.activeAllowed = false;
    monitor.start();
    loop.runPosted();
    EXPECT_THAT(keyboard.attempts, ElementsAre(EventTapMode::Active, EventTapMode::ListenOnly));
    EXPECT_TRUE(monitor.isActive());
}

TEST_F(HotkeyMonitorTest, Start_BothRefused_IsLoggedAndRetriedByEnsureEnabled) {
    keyboard.activeAllowed = keyboard.listenOnlyAllowed = false;
    monitor.start();
    loop.runPosted();
    EXPECT_FALSE(monitor.isActive());
    EXPECT_EQ(lines, (QStringList{attempting, failed}));
    for (int i = 0; i < 3; ++i)
        monitor.ensureEnabled();
    EXPECT_EQ(keyboard.attempts.size(), 8U);
    EXPECT_EQ(lines, (QStringList{attempting, failed})) << "the cause is said once";
    keyboard.activeAllowed = true;
    monitor.ensureEnabled();
    loop.runPosted();
    EXPECT_TRUE(monitor.isActive());
    EXPECT_EQ(lines, (QStringList{attempting, failed, active}));
}

TEST_F(HotkeyMonitorTest, EnsureEnabled_DisabledTap_IsBroughtBackAndLoggedOnce) {
    monitor.start();
    lines.clear();
    keyboard.enabled = false;
    monitor.ensureEnabled();
    monitor.ensureEnabled();
    EXPECT_TRUE(keyboard.enabled);
    EXPECT_EQ(lines, QStringList{reenabled});
}

TEST_F(HotkeyMonitorTest, EnsureEnabled_TapThatCannotComeBack_IsInactiveUntilItCan) {
    monitor.start();
    keyboard.enabled = keyboard.canBeEnabled = false;
    monitor.ensureEnabled();
    loop.runPosted();
    EXPECT_FALSE(monitor.isActive());
    keyboard.canBeEnabled = true;
    monitor.ensureEnabled();
    loop.runPosted();
    EXPECT_TRUE(monitor.isActive());
}

TEST_F(HotkeyMonitorTest, TapDisabledEvents_EnableItAtOnce) {
    monitor.start();
    for (const auto kind : {KeyEvent::Kind::TapDisabledByTimeout, KeyEvent::Kind::TapDisabledByUserInput}) {
        keyboard.enabled = false;
        EXPECT_EQ(keyboard.send(kind), EventVerdict::Pass);
        EXPECT_TRUE(keyboard.enabled);
    }
}

TEST_F(HotkeyMonitorTest, Fn_WhichIsTheDefault_PressesAndReleasesAndIsNotSwallowed) {
    monitor.start();
    EXPECT_EQ(keyboard.flagsChanged(modifier::fn), EventVerdict::Pass);
    expectReports("+");
    EXPECT_TRUE(monitor.isHotkeyDown());
    EXPECT_EQ(keyboard.flagsChanged(0), EventVerdict::Pass);
    expectReports("+-");
    EXPECT_FALSE(monitor.isHotkeyDown());
}

TEST_F(HotkeyMonitorTest, UnknownHotkey_CountsAsFn) {
    startWith(QStringLiteral("elephant"));
    keyboard.flagsChanged(modifier::fn);
    expectReports("+");
}

TEST_F(HotkeyMonitorTest, FnPressedAndReleasedFast_BothStepsArriveInOrder) {
    monitor.start();
    keyboard.flagsChanged(modifier::fn);
    keyboard.flagsChanged(0);
    expectReports("+-");
}

TEST_F(HotkeyMonitorTest, RightOption_LeftPressedToo_OnlyTheRightOneCounts) {
    startWith(QStringLiteral("ralt"));
    keyboard.flagsChanged(modifier::option | modifier::leftOption);
    expectReports("");
    keyboard.flagsChanged(modifier::option | modifier::leftOption | modifier::rightOption);
    expectReports("+");
    keyboard.flagsChanged(modifier::option | modifier::leftOption);
    expectReports("+-");
}

TEST_F(HotkeyMonitorTest, RightCommand_UnrelatedModifierWhileHeld_HasNoEffect) {
    startWith(QStringLiteral("rcmd"));
    keyboard.flagsChanged(modifier::command | modifier::rightCommand);
    keyboard.flagsChanged(modifier::command | modifier::rightCommand | modifier::shift | modifier::leftShift);
    keyboard.flagsChanged(modifier::command | modifier::rightCommand);
    expectReports("+");
}

TEST_F(HotkeyMonitorTest, ModifierOnly_TypedKeys_PassOn) {
    monitor.start();
    EXPECT_EQ(keyboard.keyDown(keyP, modifier::fn), EventVerdict::Pass);
    EXPECT_EQ(keyboard.keyUp(keyP), EventVerdict::Pass);
    expectReports("");
}

TEST_F(HotkeyMonitorTest, Chord_DownRepeatAndUp_AreSwallowedAndReportedOnce) {
    startWithChord(keySpace, modifier::control);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keySpace, modifier::control}));
    const quint64 flags = modifier::control | modifier::leftControl;
    EXPECT_EQ(keyboard.keyDown(keySpace, flags), EventVerdict::Swallow);
    EXPECT_EQ(keyboard.keyDown(keySpace, flags), EventVerdict::Swallow);
    EXPECT_EQ(keyboard.keyDown(keyP, flags), EventVerdict::Pass);
    expectReports("+");
    EXPECT_EQ(keyboard.keyUp(keySpace, flags), EventVerdict::Swallow);
    EXPECT_EQ(keyboard.keyUp(keySpace, flags), EventVerdict::Pass);
    expectReports("+-");
}

TEST_F(HotkeyMonitorTest, Chord_WithoutItsModifier_PassesOn) {
    startWithChord(keySpace, modifier::control | modifier::option);
    EXPECT_EQ(keyboard.keyDown(keySpace, modifier::control), EventVerdict::Pass);
    EXPECT_EQ(keyboard.keyUp(keySpace), EventVerdict::Pass);
    expectReports("");
}

TEST_F(HotkeyMonitorTest, Chord_FurtherModifiersHeld_StillMatches) {
    startWithChord(keySpace, modifier::control);
    EXPECT_EQ(keyboard.keyDown(keySpace, modifier::control | modifier::shift | modifier::capsLock),
              EventVerdict::Swallow);
    expectReports("+");
}

TEST_F(HotkeyMonitorTest, Chord_ShiftAddedWhileHeld_DoesNotRelease) {
    startWithChord(keySpace, modifier::control);
    keyboard.keyDown(keySpace, modifier::control);
    EXPECT_EQ(keyboard.flagsChanged(modifier::control | modifier::shift), EventVerdict::Pass);
    expectReports("+");
}

TEST_F(HotkeyMonitorTest, Chord_RequiredModifierReleasedFirst_ReleasesAndStillSwallowsTheKeyUp) {
    startWithChord(keySpace, modifier::control);
    keyboard.keyDown(keySpace, modifier::control);
    EXPECT_EQ(keyboard.flagsChanged(0), EventVerdict::Pass);
    expectReports("+-");
    EXPECT_EQ(keyboard.keyUp(keySpace), EventVerdict::Swallow);
    expectReports("+-");
}

TEST_F(HotkeyMonitorTest, Chord_HotkeyChangedWhileHeld_KeyUpStillReleases) {
    startWithChord(keySpace, modifier::control);
    keyboard.keyDown(keySpace, modifier::control);
    defaults.set(QStringLiteral("hotkey"), QStringLiteral("fn"));
    EXPECT_EQ(keyboard.claimed, (KeyChord{-1, modifier::fn}));
    EXPECT_EQ(keyboard.keyUp(keySpace, modifier::control), EventVerdict::Swallow);
    expectReports("+-");
}

TEST_F(HotkeyMonitorTest, FunctionKeyAlone_IsAHotkey) {
    startWithChord(keyF5, 0);
    EXPECT_EQ(keyboard.claimed, (KeyChord{keyF5, 0}));
    EXPECT_EQ(keyboard.keyDown(keyF5), EventVerdict::Swallow);
    expectReports("+");
}

TEST_F(HotkeyMonitorTest, LetterAlone_NeverMatchesWhateverIsStored) {
    startWithChord(keyP, 0);
    EXPECT_EQ(keyboard.claimed, std::nullopt);
    EXPECT_EQ(keyboard.keyDown(keyP), EventVerdict::Pass);
    expectReports("");
}

TEST_F(HotkeyMonitorTest, CustomNothingCaptured_NeverMatches) {
    startWith(QStringLiteral("custom"));
    keyboard.flagsChanged(modifier::fn | modifier::command | modifier::rightCommand);
    keyboard.keyDown(keyP, modifier::command);
    expectReports("");
}

TEST_F(HotkeyMonitorTest, CustomModifiersAlone_AllMustBeHeld) {
    startWithChord(-1, modifier::leftCommand | modifier::rightOption);
    keyboard.flagsChanged(modifier::command | modifier::leftCommand);
    expectReports("");
    keyboard.flagsChanged(modifier::command | modifier::leftCommand | modifier::option |
                          modifier::rightOption);
    expectReports("+");
}

TEST_F(HotkeyMonitorTest, ChangeInSettings_WorksWithTheNextEvent) {
    monitor.start();
    defaults.set(QStringLiteral("hotkey"), QStringLiteral("rcmd"));
    keyboard.flagsChanged(modifier::fn);
    expectReports("");
    keyboard.flagsChanged(modifier::command | modifier::rightCommand);
    expectReports("+");
}

TEST_F(HotkeyMonitorTest, Modifier_HotkeyChangedToAChordWhileHeld_ItsReleaseReleases) {
    startWith(QStringLiteral("rcmd"));
    keyboard.flagsChanged(modifier::command | modifier::rightCommand);
    startWithChord(keySpace, modifier::control);
    keyboard.flagsChanged(modifier::command | modifier::rightCommand | modifier::shift);
    expectReports("+");
    keyboard.flagsChanged(modifier::shift);
    expectReports("+-");
    keyboard.keyDown(keySpace, modifier::control);
    expectReports("+-+");
}

TEST_F(HotkeyMonitorTest, Modifier_HotkeyChangedToAnotherWhileHeld_OnlyItsReleaseReleases) {
    startWith(QStringLiteral("fn"));
    keyboard.flagsChanged(modifier::fn);
    startWith(QStringLiteral("ralt"));
    keyboard.flagsChanged(modifier::fn | modifier::shift);
    keyboard.flagsChanged(modifier::fn | modifier::rightOption);
    expectReports("+");
    keyboard.flagsChanged(modifier::rightOption);
    expectReports("+-");
    keyboard.flagsChanged(0);
    keyboard.flagsChanged(modifier::rightOption);
    expectReports("+-+");
}

TEST_F(HotkeyMonitorTest, FnStandIn_IsHandedToTheTapAtStartAndAtEachChange) {
    monitor.start();
    EXPECT_EQ(keyboard.standIn, FnStandIn::RightControl);
    defaults.set(QStringLiteral("fnStandIn"), QStringLiteral("menu"));
    EXPECT_EQ(keyboard.standIn, FnStandIn::Menu);
    defaults.set(QStringLiteral("fnStandIn"), QStringLiteral("none"));
    EXPECT_EQ(keyboard.standIn, FnStandIn::None);
}

TEST_F(HotkeyMonitorTest, OtherEvents_PassOn) {
    monitor.start();
    EXPECT_EQ(keyboard.send(KeyEvent::Kind::Other), EventVerdict::Pass);
}

TEST(HotkeyMonitorDeathTest, NegativeStoredMask_StopsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto pressWithNegativeMask = [] {
        HandLoop loop;
        QTemporaryDir folder;
        UserDefaults defaults(folder.filePath(QStringLiteral("d.json")));
        defaults.set(QStringLiteral("hotkey"), QStringLiteral("custom"));
        defaults.set(QStringLiteral("hotkeyCustomMask"), qint64{-5});
        FakeEventTapFactory keyboard;
        HotkeyMonitor monitor(loop, defaults, keyboard);
        monitor.start();
        keyboard.keyDown(keyP);
    };
    EXPECT_DEATH(pressWithNegativeMask(), "hotkeyCustomMask is negative: -5");
}
