#include "core/hotkey_recorder.h"
#include "support/fake_key_event_monitors.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace velmora {

inline void PrintTo(const CapturedHotkey& hotkey, std::ostream* out) {
    *out << hotkey.keyCode << " mask 0x" << std::hex << hotkey.mask << std::dec << " \""
         << hotkey.label.toStdString() << '"';
}

} // namespace velmora

namespace {

constexpr int keyP = 35;
constexpr int keyEscape = 53;
constexpr int keyF5 = 96;
constexpr quint64 leftCommand = modifier::command | modifier::leftCommand;
constexpr quint64 rightCommand = modifier::command | modifier::rightCommand;
constexpr quint64 rightOption = modifier::option | modifier::rightOption;

class HotkeyRecorderTest : public testing::Test {
protected:
    void start() {
        recorder->start([this](const CapturedHotkey& hotkey) { captured.push_back(hotkey); });
    }

    FakeKeyEventMonitors keyboard;
    std::optional<HotkeyRecorder> recorder{std::in_place, keyboard};
    std::vector<CapturedHotkey> captured;
};

const CapturedHotkey commandP{keyP, modifier::command, QStringLiteral("⌘ P")};
const CapturedHotkey rightCommandAlone{-1, modifier::rightCommand, QStringLiteral("Right ⌘")};

} // namespace

TEST_F(HotkeyRecorderTest, Idle_WatchesNothing) {
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(keyboard.count(), 0U);
}

TEST_F(HotkeyRecorderTest, LetterAlone_HintsAndGoesOnUntilAModifierIsHeld) {
    start();
    keyboard.keyDown(keyP);
    EXPECT_TRUE(recorder->needsModifierHint());
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_THAT(captured, IsEmpty());
    keyboard.flagsChanged(leftCommand);
    keyboard.keyDown(keyP, leftCommand);
    EXPECT_THAT(captured, ElementsAre(commandP));
    EXPECT_FALSE(recorder->needsModifierHint());
    EXPECT_FALSE(recorder->isRecording());
}

TEST_F(HotkeyRecorderTest, FunctionKeyAlone_IsCapturedByItsNameWithoutAMask) {
    start();
    keyboard.keyDown(keyF5);
    EXPECT_THAT(captured, ElementsAre(CapturedHotkey{keyF5, 0, QStringLiteral("F5")}));
}

TEST_F(HotkeyRecorderTest, FunctionKeyWithModifiers_IsCapturedWithBoth) {
    start();
    keyboard.keyDown(keyF5, modifier::shift | modifier::leftShift | modifier::control);
    EXPECT_THAT(captured, ElementsAre(CapturedHotkey{keyF5, modifier::shift | modifier::control,
                                                     QStringLiteral("⌃⇧ F5")}));
}

TEST_F(HotkeyRecorderTest, BareModifier_IsCapturedWhenReleased) {
    start();
    keyboard.flagsChanged(rightCommand);
    EXPECT_THAT(captured, IsEmpty());
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, ElementsAre(rightCommandAlone));
    EXPECT_EQ(keyboard.count(), 0U);
}

TEST_F(HotkeyRecorderTest, BareFn_IsCaptured) {
    start();
    keyboard.flagsChanged(modifier::fn);
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, ElementsAre(CapturedHotkey{-1, modifier::fn, QStringLiteral("Fn")}));
}

TEST_F(HotkeyRecorderTest, TwoModifiers_CountTogetherInWhateverOrderTheyGo) {
    const CapturedHotkey both{-1, modifier::rightOption | modifier::leftCommand,
                              QStringLiteral("Right ⌥ + Left ⌘")};
    for (const quint64 last : {leftCommand, rightOption}) {
        captured.clear();
        start();
        keyboard.flagsChanged(leftCommand);
        keyboard.flagsChanged(leftCommand | rightOption);
        keyboard.flagsChanged(last);
        keyboard.flagsChanged(0);
        EXPECT_THAT(captured, ElementsAre(both));
    }
}

TEST_F(HotkeyRecorderTest, OneAfterTheOtherWithoutAGap_PeakHoldsBoth) {
    start();
    keyboard.flagsChanged(leftCommand);
    keyboard.flagsChanged(leftCommand | rightOption);
    keyboard.flagsChanged(rightOption);
    keyboard.flagsChanged(rightOption | modifier::shift | modifier::leftShift);
    keyboard.flagsChanged(0);
    ASSERT_THAT(captured, SizeIs(1));
    EXPECT_EQ(captured.front().label, QStringLiteral("Right ⌥ + Left ⌘ + Left ⇧"));
}

TEST_F(HotkeyRecorderTest, ChordThenReleases_OneCapture) {
    start();
    keyboard.flagsChanged(leftCommand);
    keyboard.keyDown(keyP, leftCommand);
    keyboard.keyDown(keyP, leftCommand, true);
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, ElementsAre(commandP));
}

TEST_F(HotkeyRecorderTest, ModifiersHeldAtTheStart_StillMakeAChord) {
    start();
    keyboard.keyDown(keyP, leftCommand);
    EXPECT_THAT(captured, ElementsAre(commandP));
}

TEST_F(HotkeyRecorderTest, ReleaseOfModifiersHeldAtTheStart_CapturesNothing) {
    start();
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, IsEmpty());
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(HotkeyRecorderTest, PlainKeyThenModifierTapInOneGesture_IsNoBareModifier) {
    start();
    keyboard.keyDown(keyP);
    keyboard.flagsChanged(rightCommand);
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, IsEmpty());
    keyboard.flagsChanged(rightCommand); // the next gesture is one
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, ElementsAre(rightCommandAlone));
}

TEST_F(HotkeyRecorderTest, Escape_EndsWithoutACapture) {
    start();
    keyboard.keyDown(keyP);
    keyboard.keyDown(keyEscape);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_FALSE(recorder->needsModifierHint());
    EXPECT_EQ(recorder->capturedLabel(), QString());
    EXPECT_EQ(keyboard.count(), 0U);
    EXPECT_THAT(captured, IsEmpty());
}

TEST_F(HotkeyRecorderTest, EscapeWithModifiers_EndsTooAndTheirReleaseCapturesNothing) {
    start();
    keyboard.flagsChanged(leftCommand);
    keyboard.keyDown(keyEscape, leftCommand);
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, IsEmpty());
    EXPECT_FALSE(recorder->isRecording());
}

TEST_F(HotkeyRecorderTest, KeyWithoutAName_IsNumbered) {
    start();
    keyboard.keyDown(110, leftCommand);
    EXPECT_THAT(captured, ElementsAre(CapturedHotkey{110, modifier::command, QStringLiteral("⌘ key 110")}));
}

TEST_F(HotkeyRecorderTest, Repeats_AreIgnoredWhateverTheKey) {
    start();
    keyboard.keyDown(keyP, 0, true);
    keyboard.keyDown(keyP, leftCommand, true);
    keyboard.keyDown(keyF5, 0, true);
    keyboard.keyDown(keyEscape, 0, true);
    EXPECT_FALSE(recorder->needsModifierHint());
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_THAT(captured, IsEmpty());
}

TEST_F(HotkeyRecorderTest, BareCapsLock_IsCaptured) {
    start();
    keyboard.flagsChanged(modifier::capsLock);
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, ElementsAre(CapturedHotkey{-1, modifier::capsLock, QStringLiteral("⇪")}));
}

TEST_F(HotkeyRecorderTest, CapsLockWithALetter_IsStillAPlainLetter) {
    start();
    keyboard.keyDown(keyP, modifier::capsLock);
    EXPECT_TRUE(recorder->needsModifierHint());
}

TEST_F(HotkeyRecorderTest, StartWhileRunning_KeepsTheGestureAndTheFirstCallback) {
    start();
    keyboard.flagsChanged(rightCommand);
    bool secondCalled = false;
    recorder->start([&](const CapturedHotkey&) { secondCalled = true; });
    EXPECT_EQ(keyboard.count(), 2U);
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, ElementsAre(rightCommandAlone));
    EXPECT_FALSE(secondCalled);
}

TEST_F(HotkeyRecorderTest, StartAfterAStopInTheMiddle_ForgetsTheGesture) {
    start();
    keyboard.flagsChanged(rightCommand);
    recorder->stop();
    start();
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, IsEmpty());
    keyboard.keyDown(keyP);
    recorder->stop();
    start();
    keyboard.flagsChanged(rightCommand);
    keyboard.flagsChanged(0);
    EXPECT_THAT(captured, ElementsAre(rightCommandAlone));
}

TEST_F(HotkeyRecorderTest, StartFromTheCallback_CapturesAgain) {
    std::vector<QString> labels;
    recorder->start([&](const CapturedHotkey& first) {
        labels.push_back(first.label);
        recorder->start([&](const CapturedHotkey& second) { labels.push_back(second.label); });
    });
    keyboard.keyDown(keyF5);
    EXPECT_TRUE(recorder->isRecording());
    keyboard.keyDown(keyP, leftCommand);
    EXPECT_THAT(labels, ElementsAre(QStringLiteral("F5"), QStringLiteral("⌘ P")));
}

TEST_F(HotkeyRecorderTest, CapturedLabel_StaysUntilTheNextStart) {
    start();
    keyboard.keyDown(keyF5);
    EXPECT_EQ(recorder->capturedLabel(), QStringLiteral("F5"));
    recorder->stop();
    EXPECT_EQ(recorder->capturedLabel(), QStringLiteral("F5"));
    const QSignalSpy changes(&*recorder, &HotkeyRecorder::capturedLabelChanged);
    start();
    EXPECT_EQ(recorder->capturedLabel(), QString());
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(HotkeyRecorderTest, Callback_FindsTheRecorderStoppedAndTheLabelSet) {
    bool called = false;
    recorder->start([&](const CapturedHotkey& hotkey) {
        called = true;
        EXPECT_FALSE(recorder->isRecording());
        EXPECT_EQ(recorder->capturedLabel(), hotkey.label);
        EXPECT_EQ(keyboard.count(), 0U);
    });
    keyboard.keyDown(keyF5);
    EXPECT_TRUE(called);
}

TEST_F(HotkeyRecorderTest, StopFromOutside_EndsWithoutACapture) {
    start();
    keyboard.flagsChanged(rightCommand);
    recorder->stop();
    EXPECT_EQ(keyboard.count(), 0U);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_THAT(captured, IsEmpty());
}

TEST_F(HotkeyRecorderTest, NoMonitorsToBeHad_RecordsAndSeesNothing) {
    keyboard.allowed = false;
    start();
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(keyboard.count(), 0U);
    recorder->stop();
    EXPECT_FALSE(recorder->isRecording());
    keyboard.allowed = true;
    start();
    keyboard.keyDown(keyF5);
    EXPECT_THAT(captured, SizeIs(1));
}

TEST_F(HotkeyRecorderTest, DestroyedWhileRecording_EndsItsMonitors) {
    start();
    EXPECT_EQ(keyboard.count(), 2U);
    recorder.reset();
    EXPECT_EQ(keyboard.count(), 0U);
    keyboard.keyDown(keyF5);
    EXPECT_THAT(captured, IsEmpty());
}

TEST_F(HotkeyRecorderTest, DestroyedByTheCallback_IsNotTouchedAgain) {
    recorder->start([this](const CapturedHotkey& hotkey) {
        recorder.reset();
        captured.push_back(hotkey);
    });
    keyboard.keyDown(keyF5);
    EXPECT_THAT(captured, SizeIs(1));
    EXPECT_EQ(keyboard.count(), 0U);
}

TEST_F(HotkeyRecorderTest, Changes_AreAnnounced) {
    const QSignalSpy recording(&*recorder, &HotkeyRecorder::isRecordingChanged);
    const QSignalSpy hint(&*recorder, &HotkeyRecorder::needsModifierHintChanged);
    start();
    keyboard.keyDown(keyP);
    keyboard.keyDown(keyP);
    EXPECT_EQ(hint.size(), 1);
    keyboard.keyDown(keyF5);
    EXPECT_EQ(recording.size(), 2);
    EXPECT_EQ(hint.size(), 2);
}

TEST(ModifierLabel, DeviceMask_NamesEachBitInTheTablesOrder) {
    const std::vector<std::pair<quint64, QString>> table{
        {0x800000, QStringLiteral("Fn")}, {0x40, QStringLiteral("Right ⌥")},
        {0x20, QStringLiteral("Left ⌥")}, {0x10, QStringLiteral("Right ⌘")},
        {0x8, QStringLiteral("Left ⌘")},  {0x4, QStringLiteral("Right ⇧")},
        {0x2, QStringLiteral("Left ⇧")},  {0x2000, QStringLiteral("Right ⌃")},
        {0x1, QStringLiteral("Left ⌃")},  {0x10000, QStringLiteral("⇪")},
    };
    quint64 all = 0;
    QStringList names;
    for (const auto& [bit, name] : table) {
        EXPECT_EQ(HotkeyRecorder::modifierLabelForDeviceMask(bit), name);
        all |= bit;
        names.append(name);
    }
    EXPECT_EQ(HotkeyRecorder::modifierLabelForDeviceMask(all), names.join(QStringLiteral(" + ")));
}

TEST(ModifierLabel, DeviceMaskWithoutAnyOfTheBits_IsPrintedAsANumber) {
    EXPECT_EQ(HotkeyRecorder::modifierLabelForDeviceMask(0), QStringLiteral("0x0"));
    EXPECT_EQ(HotkeyRecorder::modifierLabelForDeviceMask(0x100000), QStringLiteral("0x100000"));
    EXPECT_EQ(HotkeyRecorder::modifierLabelForDeviceMask(0xABC0000000), QStringLiteral("0xabc0000000"));
}

TEST(ModifierLabel, GenericMask_NamesEachBitInTheTablesOrderWithoutGaps) {
    EXPECT_EQ(HotkeyRecorder::modifierLabelForGenericMask(0), QString());
    EXPECT_EQ(HotkeyRecorder::modifierLabelForGenericMask(0x800000), QStringLiteral("Fn"));
    EXPECT_EQ(HotkeyRecorder::modifierLabelForGenericMask(0x40000), QStringLiteral("⌃"));
    EXPECT_EQ(HotkeyRecorder::modifierLabelForGenericMask(0x80000), QStringLiteral("⌥"));
    EXPECT_EQ(HotkeyRecorder::modifierLabelForGenericMask(0x20000), QStringLiteral("⇧"));
    EXPECT_EQ(HotkeyRecorder::modifierLabelForGenericMask(0x100000), QStringLiteral("⌘"));
    EXPECT_EQ(HotkeyRecorder::modifierLabelForGenericMask(modifier::genericBits), QStringLiteral("Fn⌃⌥⇧⌘"));
}
