#include "onboarding_fixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

class OnboardingModelTest : public OnboardingFixture {
protected:
    /// A model that has found that step.
    OnboardingModel& at(Step step) {
        storeStep(step);
        return start();
    }
    OnboardingModel& start() {
        model = std::make_unique<OnboardingModel>(stage.neighbours);
        model->refresh();
        return *model;
    }

    std::unique_ptr<OnboardingModel> model;
};

} // namespace

TEST_F(OnboardingModelTest, FirstRun_StartsAtTheFirstStep) {
    EXPECT_EQ(start().step(), Step::Welcome);
    EXPECT_EQ(model->caption(), QStringLiteral("ШАГ 1 ИЗ 5"));
    EXPECT_FALSE(model->canGoBack());
    EXPECT_TRUE(model->canContinue());
}

TEST_F(OnboardingModelTest, StoredStepOutsideTheTable_IsCorrectedToTheFirst) {
    stage.signedIn();
    for (const qint64 stored : {-1, 0, 6, 99}) {
        storeStep(stored);
        EXPECT_EQ(start().step(), Step::Welcome) << stored;
        EXPECT_EQ(storedStep(), 1) << stored;
    }
}

TEST_F(OnboardingModelTest, RelaunchAtAnyStepWithASession_ShowsThatStepAgain) {
    stage.signedIn();
    for (int step = Step::Welcome; step <= Step::TutorialHotkey; ++step)
        EXPECT_EQ(at(static_cast<Step>(step)).step(), step);
}

TEST_F(OnboardingModelTest, RelaunchAfterSigningOut_FallsBackToTheSignInFromBehindIt) {
    const std::vector<int> shown{1, 2, 2, 2, 2};
    for (int step = Step::Welcome; step <= Step::TutorialHotkey; ++step) {
        EXPECT_EQ(at(static_cast<Step>(step)).step(), shown.at(static_cast<std::size_t>(step - 1)));
        EXPECT_EQ(storedStep(), model->step());
    }
}

TEST_F(OnboardingModelTest, SessionEndsWhileAStepIsShown_TheNextLookGoesBackToTheSignIn) {
    stage.signedIn();
    at(Step::TutorialDictation);
    auth.clear();
    model->refresh();
    EXPECT_EQ(model->step(), Step::Auth);
    EXPECT_EQ(storedStep(), 2);
}

TEST_F(OnboardingModelTest, EachStepDone_GoesOnAndIsStored) {
    start();
    model->proceed();
    EXPECT_EQ(model->step(), Step::Auth);
    EXPECT_EQ(storedStep(), 2);
    stage.signedIn();
    model->proceed();
    EXPECT_EQ(model->step(), Step::TutorialDictation);
    model->setTutorial1Text(QStringLiteral("раз"));
    model->proceed();
    EXPECT_EQ(model->step(), Step::TutorialHotkey);
    EXPECT_EQ(model->caption(), QStringLiteral("ШАГ 5 ИЗ 5"));
    EXPECT_EQ(storedStep(), 5);
}

TEST_F(OnboardingModelTest, Back_LowersTheStepByOneAndStopsAtTheFirst) {
    stage.signedIn();
    at(Step::TutorialHotkey);
    QList<int> steps;
    for (int i = 0; i < 5; ++i) {
        model->back();
        steps.append(model->step());
    }
    EXPECT_THAT(steps, ElementsAre(4, 3, 2, 1, 1));
}

TEST_F(OnboardingModelTest, SignInArrivesAtItsStep_GoesOnByItself) {
    at(Step::Auth);
    EXPECT_FALSE(model->canContinue());
    stage.signedIn();
    EXPECT_EQ(model->step(), Step::Permissions);
    EXPECT_EQ(storedStep(), 3);
}

TEST_F(OnboardingModelTest, SignInArrivesAtAnotherStep_StaysThere) {
    start();
    stage.signedIn();
    EXPECT_EQ(model->step(), Step::Welcome);
    model->proceed();
    EXPECT_EQ(model->step(), Step::Auth);
    EXPECT_TRUE(model->canContinue());
}

TEST_F(OnboardingModelTest, TokensAreRotatedAtTheSignIn_IsNoArrival) {
    stage.signedIn();
    at(Step::Auth);
    auth.save(QStringLiteral("another"), QStringLiteral("pair"));
    EXPECT_EQ(model->step(), Step::Auth);
}

TEST_F(OnboardingModelTest, TutorialTexts_AllowToContinueOnceThereIsMoreThanSpace) {
    struct Case {
        Step step;
        void (OnboardingModel::*set)(const QString&);
    };
    stage.signedIn();
    for (const Case& each : {Case{Step::TutorialDictation, &OnboardingModel::setTutorial1Text},
                             Case{Step::TutorialHotkey, &OnboardingModel::setTutorial2Text}}) {
        at(each.step);
        for (const char* blank : {"", " ", "\n", " \t\r\n "}) {
            ((*model).*each.set)(QString::fromUtf8(blank));
            EXPECT_FALSE(model->canContinue());
            EXPECT_FALSE(model->obstacle().isEmpty());
        }
        const QSignalSpy changes(model.get(), &OnboardingModel::canContinueChanged);
        ((*model).*each.set)(QStringLiteral(" а\n"));
        EXPECT_TRUE(model->canContinue());
        EXPECT_TRUE(model->obstacle().isEmpty());
        EXPECT_EQ(changes.size(), 1);
    }
}

TEST_F(OnboardingModelTest, CannotContinue_ProceedDoesNothing) {
    bool closed = false;
    at(Step::Auth).onClose = [&closed] { closed = true; };
    model->proceed();
    EXPECT_EQ(model->step(), Step::Auth);
    stage.signedIn();
    at(Step::TutorialHotkey).onClose = [&closed] { closed = true; };
    model->proceed();
    EXPECT_EQ(model->step(), Step::TutorialHotkey);
    EXPECT_FALSE(closed);
    EXPECT_FALSE(settings.hasOnboarded());
}

TEST_F(OnboardingModelTest, LastStepDone_IsOnboardedAndCloses) {
    stage.signedIn();
    bool closed = false;
    at(Step::TutorialHotkey).onClose = [&] { closed = settings.hasOnboarded(); };
    model->setTutorial2Text(QStringLiteral("готово"));
    model->proceed();
    EXPECT_TRUE(closed) << "onboarded first";
    EXPECT_EQ(model->step(), Step::TutorialHotkey);
}

TEST_F(OnboardingModelTest, Refresh_LooksAtTheRights) {
    start();
    stage.rights.granted = {PrivacyRight::Microphone};
    model->refresh();
    EXPECT_TRUE(stage.perms.micGranted());
}

TEST_F(OnboardingModelTest, Refresh_FetchesTheUserOnlyWhileSignedInAndMissing) {
    start();
    model->refresh();
    EXPECT_EQ(stage.transport.count(), 0U);
    stage.email.clear(); // no answer
    stage.signedIn();
    model->refresh();
    model->refresh();
    EXPECT_EQ(stage.transport.count(), 1U) << "one request at a time";
    EXPECT_EQ(model->account(), QString());
    stage.transport.last().fail(QStringLiteral("offline"));
    stage.email = QStringLiteral("anna@example.org");
    model->refresh();
    EXPECT_EQ(model->account(), QStringLiteral("anna@example.org"));
    model->refresh();
    EXPECT_EQ(stage.transport.count(), 2U);
}

TEST_F(OnboardingModelTest, OpenLoginURL_OpensThePageAndWaitsFromNowOn) {
    at(Step::Auth);
    EXPECT_FALSE(model->awaitsBrowser());
    loop.advance(std::chrono::seconds(5));
    model->openLoginURL();
    ASSERT_EQ(workspace.opened.size(), 1);
    EXPECT_TRUE(workspace.opened.front().toString().startsWith(
        QStringLiteral("https://velmora.example.org/auth?source=app&state=")));
    EXPECT_EQ(model->loginOpenedAt(), loop.date());
    EXPECT_TRUE(model->awaitsBrowser());
    model->openLoginURL();
    EXPECT_NE(workspace.opened.front(), workspace.opened.back()) << "a state of its own";
    stage.signedIn();
    EXPECT_FALSE(model->awaitsBrowser());
}

TEST_F(OnboardingModelTest, NoBrowserOpens_SaysSoInsteadOfWaiting) {
    workspace.opens = false;
    at(Step::Auth).openLoginURL();
    EXPECT_FALSE(model->awaitsBrowser());
    EXPECT_EQ(model->loginProblem(), QStringLiteral("Не удалось открыть браузер."));
    workspace.opens = true;
    model->openLoginURL();
    EXPECT_TRUE(model->awaitsBrowser());
    EXPECT_TRUE(model->loginProblem().isEmpty());
}

TEST_F(OnboardingModelTest, Permissions_AreThreeAndLeadToTheirRight) {
    start();
    PermissionsModel& rows = *model->permissions();
    QStringList titles;
    for (int row = 0; row < rows.rowCount(); ++row) {
        titles.append(rows.data(rows.index(row), PermissionsModel::Title).toString());
        rows.act(row);
    }
    EXPECT_THAT(titles, ElementsAre(QStringLiteral("Микрофон"), QStringLiteral("Input Monitoring"),
                                    QStringLiteral("Accessibility")));
    EXPECT_THAT(stage.rights.requests, ElementsAre(PrivacyRight::Microphone, PrivacyRight::InputMonitoring,
                                                   PrivacyRight::Accessibility));
    EXPECT_EQ(stage.rights.openedSettings, stage.rights.requests);
}

TEST_F(OnboardingModelTest, Privacy_NamesTheBackendsHost) {
    EXPECT_TRUE(start().privacy().contains(QStringLiteral("api.velmora.app")));
    EXPECT_FALSE(model->privacy().contains(QStringLiteral("https")));
    stage.info = InfoDictionary(
        {{QStringLiteral("VelmorBackendURL"), QStringLiteral("http://speech.example.org:8791/v2")}});
    EXPECT_TRUE(start().privacy().contains(QStringLiteral("на speech.example.org,")));
}
