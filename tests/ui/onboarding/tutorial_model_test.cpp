#include "onboarding_fixture.h"

#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

class TutorialModelTest : public OnboardingFixture {
protected:
    OnboardingModel onboarding{stage.neighbours};
    TutorialModel& tutorial = *onboarding.tutorial();
};

} // namespace

TEST_F(TutorialModelTest, Key_SaysWhichOneItIsWhereTheTextsSayFn) {
    struct Case {
        const char* hotkey;
        const char* customLabel;
        const char* standIn;
        const char* label;
        const char* note;
    };
    for (const Case& each : {
             Case{"fn", "", "rctrl", "Fn", "Fn здесь — правый Ctrl"},
             Case{"fn", "", "pause", "Fn", "Fn здесь — Pause"},
             Case{"fn", "", "none", "Fn", ""},
             Case{"ralt", "", "rctrl", "Right ⌥", "Вместо Fn у тебя — Right ⌥"},
             Case{"custom", "⌃ Space", "rctrl", "⌃ Space", "Вместо Fn у тебя — ⌃ Space"},
         }) {
        settings.setHotkey(QString::fromUtf8(each.hotkey));
        settings.setHotkeyCustomLabel(QString::fromUtf8(each.customLabel));
        settings.setFnStandIn(QString::fromUtf8(each.standIn));
        EXPECT_EQ(tutorial.keyLabel(), QString::fromUtf8(each.label));
        EXPECT_EQ(tutorial.keyNote(), QString::fromUtf8(each.note));
    }
}

TEST_F(TutorialModelTest, KeyChanges_IsTold) {
    const QSignalSpy changes(&tutorial, &TutorialModel::keyChanged);
    settings.setHotkey(QStringLiteral("rcmd"));
    settings.setFnStandIn(QStringLiteral("menu"));
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(TutorialModelTest, Hint_FollowsTheRecording) {
    EXPECT_EQ(tutorial.hint(), QStringLiteral("Зажми Fn и говори"));
    EXPECT_TRUE(tutorial.canRecord());
    record();
    EXPECT_TRUE(tutorial.isRecording());
    EXPECT_EQ(tutorial.hint(), QStringLiteral("Записываем…"));
    EXPECT_FALSE(tutorial.canRecord());
    loop.advance(std::chrono::seconds(1));
    pipeline.stopAndProcess();
    loop.advance(std::chrono::milliseconds(150));
    EXPECT_FALSE(tutorial.isRecording());
    EXPECT_EQ(tutorial.hint(), QStringLiteral("Зажми Fn и говори"));
    EXPECT_FALSE(tutorial.canRecord());
}

TEST_F(TutorialModelTest, Record_StartsATestRecordingOnlyWhileNothingIsDictated) {
    tutorial.record();
    EXPECT_EQ(stage.testRecordings, 1);
    record();
    tutorial.record();
    EXPECT_EQ(stage.testRecordings, 1);
}

TEST_F(TutorialModelTest, DictationFails_SaysWhyUntilTheNextOne) {
    fail();
    const QString sentence = QStringLiteral("Нет доступа к микрофону. Разрешите его в Системных настройках.");
    EXPECT_EQ(tutorial.problem(), sentence);
    loop.advance(std::chrono::seconds(10)); // the pipeline is idle again
    EXPECT_EQ(tutorial.problem(), sentence);
    engine.authorizationStatus = MicrophoneAuthorization::Authorized;
    record();
    EXPECT_TRUE(tutorial.problem().isEmpty());
}

TEST_F(TutorialModelTest, StepLeft_ForgetsWhatWentWrong) {
    fail();
    onboarding.proceed();
    EXPECT_TRUE(tutorial.problem().isEmpty());
}
