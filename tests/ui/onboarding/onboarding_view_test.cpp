#include "onboarding_fixture.h"
#include "support/ui/view_host.h"
#include "support/wait.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

namespace {

class OnboardingViewTest : public OnboardingFixture {
protected:
    /// Shows that step; behind the sign-in, signed in.
    void show(Step step, bool onScreen = true) {
        if (step > Step::Auth)
            stage.signedIn();
        storeStep(step);
        // The view before, if there was one, looks at its model to its end.
        const auto before = std::exchange(model, std::make_unique<OnboardingModel>(stage.neighbours));
        model->refresh();
        model->setOnScreen(onScreen);
        host.show("Onboarding", "OnboardingView",
                  {{QStringLiteral("model"), QVariant::fromValue(model.get())}}, {680, 580});
    }
    [[nodiscard]] QString focusedName() const { return accessibleName(host.focused()); }
    /// Of all that the view can animate for as long as it is shown.
    [[nodiscard]] QStringList runningLoops() const {
        QStringList running;
        for (const char* name : {"glow", "timeline", "pulse", "animateForever"}) {
            const auto* animation = host.root()->findChild<QObject*>(QLatin1String(name));
            if (animation && animation->property("running").toBool())
                running.append(QLatin1String(name));
        }
        return running;
    }
    /// Tabs through all that can have the keyboard, from what has it.
    [[nodiscard]] QStringList tabStops() const {
        QStringList stops;
        const QQuickItem* start = host.focused();
        do {
            stops.append(focusedName());
            host.press(Qt::Key_Tab);
        } while (host.focused() != start && stops.size() < 20);
        return stops;
    }
    /// The description that a screen reader has of the button that goes on.
    [[nodiscard]] QString continueDescription() const {
        QAccessibleInterface* button = QAccessible::queryAccessibleInterface(host.find(next));
        return button->text(QAccessible::Description);
    }

    const QString next = QStringLiteral("Продолжить");
    const QString prompt1 = QStringLiteral("Текст появится здесь после диктовки…");
    std::unique_ptr<OnboardingModel> model;
    ViewHost host; // last: its view looks at the rest
};

} // namespace

TEST_F(OnboardingViewTest, Welcome_SaysWhatTheProgramDoes) {
    show(Step::Welcome);
    EXPECT_THAT(host.texts(),
                IsSupersetOf({QStringLiteral("ШАГ 1 ИЗ 5"),
                              QStringLiteral("Velmora распознаёт твою речь, чистит её от слов-паразитов и "
                                             "вставляет готовый текст прямо в курсор. Работает в любом "
                                             "приложении на Mac.")}));
    EXPECT_FALSE(host.has(QStringLiteral("Назад")));
    host.click(next);
    EXPECT_EQ(model->step(), Step::Auth);
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("ШАГ 2 ИЗ 5")));
    host.click(QStringLiteral("Назад"));
    EXPECT_EQ(model->step(), Step::Welcome);
}

TEST_F(OnboardingViewTest, SignIn_OpensTheBrowserWaitsAndGoesOnWhenItArrives) {
    show(Step::Auth);
    EXPECT_THAT(
        host.texts(),
        IsSupersetOf({QStringLiteral("Войди в Velmora."),
                      QStringLiteral("Откроется браузер: можно войти через email/пароль или Google.")}));
    EXPECT_FALSE(host.has(QStringLiteral("Ждём подтверждения в браузере…")));
    host.click(QStringLiteral("Войти через браузер"));
    EXPECT_EQ(workspace.opened.size(), 1);
    EXPECT_TRUE(host.has(QStringLiteral("Ждём подтверждения в браузере…")));
    stage.signedIn();
    EXPECT_EQ(model->step(), Step::Permissions);
    EXPECT_EQ(focusedName(), next);
}

TEST_F(OnboardingViewTest, SignedIn_SaysWho) {
    stage.signedIn();
    show(Step::Auth);
    EXPECT_THAT(host.texts(),
                IsSupersetOf({QStringLiteral("anna@example.org\nподключён."),
                              QStringLiteral("Готово — можно пользоваться Velmora с этого Mac.")}));
    EXPECT_FALSE(host.has(QStringLiteral("Войти через браузер")));
    EXPECT_EQ(focusedName(), next);
}

TEST_F(OnboardingViewTest, SignedInWithALongAddress_NoTextRunsOutOfItsPlace_AndAScreenReaderHasAllOfIt) {
    stage.email =
        QStringLiteral("konstantin.konstantinopolsky-preobrazhensky@very-long-department.example.org");
    stage.signedIn();
    show(Step::Auth);
    int texts = 0;
    for (const QQuickItem* item : host.root()->findChildren<QQuickItem*>()) {
        const QVariant contentWidth = item->property("contentWidth");
        if (!item->inherits("QQuickText") || !item->isVisible() ||
            item->property("text").toString().isEmpty())
            continue;
        ++texts;
        EXPECT_LE(contentWidth.toDouble(), item->width()) << qPrintable(item->property("text").toString());
    }
    EXPECT_GE(texts, 4);
    EXPECT_TRUE(host.has(stage.email + QStringLiteral("\nподключён.")));
}

TEST_F(OnboardingViewTest, NoBrowser_IsSaidUnderTheButton) {
    workspace.opens = false;
    show(Step::Auth);
    host.click(QStringLiteral("Войти через браузер"));
    EXPECT_TRUE(host.has(QStringLiteral("Не удалось открыть браузер.")));
    EXPECT_TRUE(host.has(QStringLiteral("Войти через браузер")));
}

TEST_F(OnboardingViewTest, Permissions_ShowTheirStateAndTheWayToIt) {
    stage.rights.granted = {PrivacyRight::InputMonitoring};
    show(Step::Permissions);
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("Три разрешения.\nОдин раз.")));
    EXPECT_TRUE(host.has(QStringLiteral("Микрофон: Нет доступа")));
    EXPECT_TRUE(host.has(QStringLiteral("Input Monitoring: Разрешено")));
    EXPECT_TRUE(host.has(QStringLiteral("Accessibility: Нет доступа")));
    EXPECT_TRUE(host.has(model->privacy()));
    host.click(QStringLiteral("Разрешить"));
    EXPECT_THAT(stage.rights.openedSettings, ElementsAre(PrivacyRight::Microphone));
    stage.rights.granted = {PrivacyRight::Microphone, PrivacyRight::InputMonitoring,
                            PrivacyRight::Accessibility};
    model->refresh();
    EXPECT_FALSE(host.has(QStringLiteral("Разрешить")));
    EXPECT_TRUE(host.has(QStringLiteral("Accessibility: Разрешено")));
}

TEST_F(OnboardingViewTest, Tutorial_TheFieldHasTheKeyboardAndWhatArrivesThereAllowsToContinue) {
    show(Step::TutorialDictation);
    EXPECT_EQ(focusedName(), prompt1);
    EXPECT_EQ(accessibleRole(host.focused()), QAccessible::EditableText);
    host.type(QStringLiteral("привет"));
    EXPECT_EQ(model->tutorial1Text(), QStringLiteral("привет"));
    host.press(Qt::Key_Return);
    EXPECT_EQ(model->step(), Step::TutorialHotkey);
    EXPECT_EQ(focusedName(), QStringLiteral("Текст появится здесь…"));
    host.type(QStringLiteral("пока"));
    EXPECT_EQ(model->tutorial2Text(), QStringLiteral("пока"));
    host.click(QStringLiteral("Назад"));
    EXPECT_EQ(host.focused()->property("text"), QStringLiteral("привет"));
}

TEST_F(OnboardingViewTest, TutorialField_EnterGoesOnAndWithShiftItIsANewLine) {
    show(Step::TutorialDictation);
    host.press(Qt::Key_Return);
    EXPECT_EQ(model->tutorial1Text(), QString()) << "an empty field gains no line";
    EXPECT_EQ(model->step(), Step::TutorialDictation);
    host.type(QStringLiteral("а"));
    host.press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(model->step(), Step::TutorialDictation);
    EXPECT_EQ(model->tutorial1Text(), QStringLiteral("а\n"));
}

TEST_F(OnboardingViewTest, FallbackButton_RecordsAndLeavesTheFocusInTheField) {
    show(Step::TutorialDictation);
    const QQuickItem* field = host.focused();
    host.click(QStringLiteral("Записать"));
    EXPECT_EQ(stage.testRecordings, 1);
    EXPECT_EQ(host.focused(), field);
    host.press(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), QStringLiteral("Записать"));
    host.press(Qt::Key_Space);
    EXPECT_EQ(stage.testRecordings, 2);
    EXPECT_EQ(host.focused(), field);
}

TEST_F(OnboardingViewTest, Recording_LightsTheKeyAndSaysSo) {
    for (const Step step : {Step::TutorialDictation, Step::TutorialHotkey}) {
        show(step);
        const QQuickItem* key = host.find(QStringLiteral("Fn"));
        EXPECT_FALSE(key->property("lit").toBool());
        EXPECT_FALSE(host.has(QStringLiteral("Записываем…")));
        record();
        EXPECT_TRUE(key->property("lit").toBool());
        EXPECT_TRUE(host.has(QStringLiteral("Записываем…")));
        loop.advance(std::chrono::seconds(1));
        pipeline.stopAndProcess();
        loop.advance(std::chrono::milliseconds(150));
        EXPECT_FALSE(key->property("lit").toBool());
        server.fail(QStringLiteral("нет сети"));
        loop.advance(std::chrono::seconds(6));
    }
}

TEST_F(OnboardingViewTest, DictationFails_TheSentenceStandsUnderTheField) {
    show(Step::TutorialDictation);
    fail();
    EXPECT_TRUE(host.has(QStringLiteral("Нет доступа к микрофону. Разрешите его в Системных настройках.")));
    EXPECT_FALSE(model->canContinue());
}

TEST_F(OnboardingViewTest, AnotherHotkey_IsOnTheKeyAndUnderTheText) {
    settings.setHotkey(QStringLiteral("ralt"));
    show(Step::TutorialHotkey);
    EXPECT_TRUE(host.has(QStringLiteral("Right ⌥")));
    EXPECT_TRUE(host.has(QStringLiteral("Вместо Fn у тебя — Right ⌥")));
    EXPECT_THAT(host.texts(), IsSupersetOf({QStringLiteral("Тапни 2 раза"),
                                            QStringLiteral("Сменить клавишу можно в Настройки → Запись.")}));
}

TEST_F(OnboardingViewTest, CannotContinue_TheButtonIsReachedSaysSoAndDoesNothing) {
    show(Step::Auth);
    EXPECT_EQ(continueDescription(), QStringLiteral("Недоступно: сначала войди в аккаунт"));
    EXPECT_THAT(tabStops(), Contains(next));
    host.click(next);
    EXPECT_EQ(model->step(), Step::Auth);
    host.find(next)->forceActiveFocus();
    host.press(Qt::Key_Space);
    host.press(Qt::Key_Return);
    EXPECT_EQ(model->step(), Step::Auth);
    stage.signedIn();
    EXPECT_EQ(continueDescription(), QString());
}

TEST_F(OnboardingViewTest, EnterAlone_LeadsFromTheWelcomeToTheSignIn) {
    show(Step::Welcome);
    host.press(Qt::Key_Return);
    ASSERT_EQ(model->step(), Step::Auth);
    EXPECT_EQ(focusedName(), QStringLiteral("Войти через браузер"));
    host.press(Qt::Key_Return);
    EXPECT_EQ(workspace.opened.size(), 1);
    stage.signedIn();
    ASSERT_EQ(model->step(), Step::Permissions);
    host.press(Qt::Key_Enter);
    EXPECT_EQ(model->step(), Step::TutorialDictation);
}

TEST_F(OnboardingViewTest, EnterHeld_IsOneStepAndOpensNoPages) {
    show(Step::Welcome);
    host.press(Qt::Key_Return);
    ASSERT_EQ(model->step(), Step::Auth);
    for (int repeat = 0; repeat < 3; ++repeat) {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
        QCoreApplication::sendEvent(&host.window(), &held);
    }
    EXPECT_TRUE(workspace.opened.isEmpty());
    stage.signedIn();
    ASSERT_EQ(model->step(), Step::Permissions);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QCoreApplication::sendEvent(&host.window(), &held);
    EXPECT_EQ(model->step(), Step::Permissions);
}

TEST_F(OnboardingViewTest, Tab_ReachesEveryControlOfAStep) {
    show(Step::Permissions);
    EXPECT_THAT(tabStops(),
                testing::UnorderedElementsAre(QStringLiteral("Разрешить"), QStringLiteral("Разрешить"),
                                              QStringLiteral("Разрешить"), QStringLiteral("Назад"), next));
    show(Step::TutorialDictation);
    EXPECT_THAT(tabStops(), testing::UnorderedElementsAre(prompt1, QStringLiteral("Записать"),
                                                          QStringLiteral("Назад"), next));
}

TEST_F(OnboardingViewTest, WhatMoves_MovesOnlyWhileItIsSeen) {
    const std::vector<std::pair<Step, QStringList>> loops{
        {Step::Welcome, {QStringLiteral("glow"), QStringLiteral("timeline")}},
        {Step::Auth, {}},
        {Step::Permissions, {}},
        {Step::TutorialDictation, {QStringLiteral("pulse")}},
        {Step::TutorialHotkey, {QStringLiteral("animateForever")}},
    };
    for (const auto& [step, moving] : loops) {
        show(step, false);
        EXPECT_EQ(runningLoops(), QStringList()) << step;
        model->setOnScreen(true);
        EXPECT_EQ(runningLoops(), moving) << step;
        model->setOnScreen(false);
        EXPECT_EQ(runningLoops(), QStringList()) << step;
    }
}

TEST_F(OnboardingViewTest, StepLeft_ItsLoopsAreGone) {
    show(Step::Welcome);
    model->proceed();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(runningLoops(), QStringList());
}

TEST_F(OnboardingViewTest, Rings_GoOutOneAfterTheOther) {
    show(Step::TutorialHotkey);
    const QObject* rings = host.root()->findChild<QObject*>(QStringLiteral("rings"));
    ASSERT_TRUE(rings);
    const auto pulse = [rings](const char* name) { return rings->property(name).toReal(); };
    EXPECT_TRUE(waitUntil([&] { return pulse("pulse1") > 0 && pulse("pulse2") == 0; }));
    EXPECT_TRUE(waitUntil([&] { return pulse("pulse2") > 0 && pulse("pulse2") < pulse("pulse1"); }));
}

TEST_F(OnboardingViewTest, StepChanges_TheNextOneComesIn) {
    show(Step::Welcome);
    const QObject* entrance = host.root()->findChild<QObject*>(QStringLiteral("entrance"));
    ASSERT_TRUE(entrance);
    EXPECT_FALSE(entrance->property("running").toBool());
    model->proceed();
    EXPECT_TRUE(entrance->property("running").toBool());
    EXPECT_TRUE(waitUntil([&] { return !entrance->property("running").toBool(); }));
}
