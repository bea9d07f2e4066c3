#include "app/app_delegate.h"
#include "backend/sign_in.h"
#include "foundation/log.h"
#include "support/dictation_on_fakes.h"
#include "support/fake_app_windows.h"
#include "support/fake_click_watch.h"
#include "support/fake_color_scheme.h"
#include "support/fake_compositing.h"
#include "support/fake_event_tap.h"
#include "support/fake_privacy_rights.h"
#include "support/fake_screens.h"
#include "support/fake_status_item.h"
#include "support/wait.h"
#include "ui/kit/v_theme.h"
#include "ui/qml_engine.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPointer>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>

#include <array>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

const QString mismatch = QStringLiteral("velmora_auth_url_rejected: state mismatch");

class AppDelegateTest : public testing::Test, protected DictationOnFakes {
protected:
    void open(const QString& url) {
        app.handleCommand(instance_command::OpenURL{url});
        loop.runPosted();
    }
    /// Somebody who has been through the first run, and is signed in.
    void becomeUser() {
        defaults.set(QStringLiteral("velmora.migratedToSaaS"), true);
        settings.setHasOnboarded(true);
        authStore.save(QStringLiteral("a"), QStringLiteral("r"));
    }
    [[nodiscard]] bool isRecording() const {
        return std::holds_alternative<pipeline_state::Recording>(app.pipeline().state());
    }

    QStringList lines;
    LogCapture capture{[this](const QString& line) { lines.append(line); }};
    QString support = folder.filePath(QStringLiteral("Velmora"));
    AuthStore authStore{support, defaults};
    SignIn signIn{authStore, workspace, QStringLiteral("https://landing.test")};
    FakeEventTapFactory keyboard;
    FakePrivacyRights rights = [] {
        FakePrivacyRights all;
        all.granted = {PrivacyRight::Microphone, PrivacyRight::InputMonitoring, PrivacyRight::Accessibility};
        return all;
    }();
    AppNavigator navigator;
    FakeAppWindows windows;
    FakeStatusItem statusItem;
    FakeScreens screens;
    FakeCompositing compositing;
    FakeClickWatch clicks;
    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    UiEngine engineOfViews{makeQmlEngine};
    int terminations = 0;
    AppDelegate app{{
        .loop = loop,
        .defaults = defaults,
        .settings = settings,
        .taps = keyboard,
        .authStore = authStore,
        .account = account,
        .signIn = signIn,
        .pipeline = {loop, recorder, settings, history, server, account, injector, sounds, workspace},
        .rights = rights,
        .navigator = navigator,
        .windows = windows,
        .statusItem = statusItem,
        .screens = screens,
        .compositing = compositing,
        .clicks = clicks,
        .engine = engineOfViews,
        .applicationSupportFolder = support,
        .terminate = [this] { ++terminations; },
    }};
};

} // namespace

TEST_F(AppDelegateTest, Launch_TakesItsStepsInOrder) {
    QStringList steps;
    const auto note = [&steps](const char* step) {
        return [&steps, name = QString::fromLatin1(step)] {
            if (!steps.endsWith(name))
                steps.append(name);
        };
    };
    const QString leftover = folder.filePath(QStringLiteral("recordings-killed/velmora-1.m4a"));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("recordings-killed")));
    ASSERT_TRUE(QFile(leftover).open(QIODevice::WriteOnly));
    QObject::connect(&defaults, &UserDefaults::changed, note("migration"));
    rights.lookedAt = [&, look = note("rights")] {
        look();
        EXPECT_FALSE(QFile::exists(leftover));
    };
    engine.prepared = note("microphone");
    statusItem.imageSet = note("icon");
    keyboard.attempted = note("hotkey");
    windows.onboarding.cameToFront = note("first run");
    account.refreshed = note("account");
    authStore.save(QStringLiteral("a"), QStringLiteral("r"));
    app.applicationDidFinishLaunching();
    EXPECT_EQ(steps.join(u' '), QStringLiteral("migration rights microphone icon hotkey first run account"));
    loop.runPosted();
    EXPECT_TRUE(app.hotkey().isActive());
    EXPECT_EQ(windows.prewarms, 0);
}

TEST_F(AppDelegateTest, Launch_MicrophoneAllowed_PrewarmsItAndStartsTheHotkey) {
    app.applicationDidFinishLaunching();
    loop.runPosted();
    EXPECT_EQ(engine.prepares, 1);
    EXPECT_TRUE(app.hotkey().isActive());
}

TEST_F(AppDelegateTest, Launch_MicrophoneNotAllowed_IsNoErrorAndTheFirstPressReportsIt) {
    rights.granted.erase(PrivacyRight::Microphone);
    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    app.applicationDidFinishLaunching();
    EXPECT_EQ(engine.prepares, 0);
    app.handleCommand(instance_command::Press{});
    EXPECT_EQ(lines.last(), QStringLiteral("[Velmora] dictation: Нет доступа к микрофону. Разрешите его в "
                                           "Системных настройках."));
}

TEST_F(AppDelegateTest, Launch_SignedIn_LoadsTheAccount) {
    app.applicationDidFinishLaunching();
    EXPECT_EQ(account.refreshMeCalls, 0);
    authStore.save(QStringLiteral("a"), QStringLiteral("r"));
    app.applicationDidFinishLaunching();
    EXPECT_EQ(account.refreshMeCalls, 1);
}

TEST_F(AppDelegateTest, ErrorWhileLatched_NextPressOnlyReturnsTheGateToIdle) {
    app.applicationDidFinishLaunching();
    engine.format = {0, 0};
    app.handleCommand(instance_command::Toggle{}); // latched, and the recording fails to start
    EXPECT_TRUE(std::holds_alternative<pipeline_state::Error>(app.pipeline().state()));
    loop.advance(6s);
    engine.format = {48000, 1};
    app.handleCommand(instance_command::Press{});
    EXPECT_FALSE(isRecording());
    app.handleCommand(instance_command::Release{});
    app.handleCommand(instance_command::Press{});
    EXPECT_TRUE(isRecording());
}

TEST_F(AppDelegateTest, Hotkey_HeldAndReleased_RecordsAndStops) {
    app.applicationDidFinishLaunching();
    keyboard.flagsChanged(modifier::fn);
    loop.runPosted();
    EXPECT_TRUE(isRecording());
    loop.advance(1s);
    keyboard.flagsChanged(0);
    loop.advance(150ms);
    EXPECT_EQ(server.requests.size(), 1);
}

TEST_F(AppDelegateTest, HotkeyRefusedAtStart_IsTriedAgainEveryThreeSeconds) {
    keyboard.activeAllowed = keyboard.listenOnlyAllowed = false;
    app.applicationDidFinishLaunching();
    const std::size_t attempts = keyboard.attempts.size();
    loop.advance(2999ms);
    EXPECT_EQ(keyboard.attempts.size(), attempts);
    keyboard.activeAllowed = true;
    loop.advance(1ms);
    EXPECT_TRUE(app.hotkey().isActive());
}

TEST_F(AppDelegateTest, Verbs_WorkWithoutAKeyboard) {
    keyboard.activeAllowed = keyboard.listenOnlyAllowed = false;
    app.applicationDidFinishLaunching();
    app.handleCommand(instance_command::Press{});
    EXPECT_TRUE(isRecording());
    loop.advance(1s);
    app.handleCommand(instance_command::Release{});
    loop.advance(150ms);
    EXPECT_EQ(server.requests.size(), 1);
}

TEST_F(AppDelegateTest, ToggleVerb_StartsAndStopsInHoldMode) {
    app.applicationDidFinishLaunching();
    app.handleCommand(instance_command::Toggle{});
    EXPECT_TRUE(isRecording());
    loop.advance(1s);
    app.handleCommand(instance_command::Toggle{});
    loop.advance(150ms);
    EXPECT_EQ(server.requests.size(), 1);
}

TEST_F(AppDelegateTest, Activation_RepairsTheHotkeyPrewarmsAndReloadsTheAccount) {
    app.applicationDidFinishLaunching();
    authStore.save(QStringLiteral("a"), QStringLiteral("r"));
    keyboard.enabled = false;
    app.handleCommand(instance_command::Activate{});
    EXPECT_TRUE(keyboard.enabled);
    EXPECT_EQ(engine.prepares, 2);
    EXPECT_EQ(account.refreshMeCalls, 1);
}

TEST_F(AppDelegateTest, Activation_SignedOut_AsksForNoAccount) {
    app.applicationDidFinishLaunching();
    app.handleCommand(instance_command::Activate{});
    EXPECT_EQ(account.refreshMeCalls, 0);
}

TEST_F(AppDelegateTest, SignInVerb_OpensTheLandingPageWithANewState) {
    app.handleCommand(instance_command::SignIn{});
    ASSERT_EQ(workspace.opened.size(), 1);
    EXPECT_TRUE(workspace.opened.front().toString().startsWith(
        QStringLiteral("https://landing.test/auth?source=app&state=")));
}

TEST_F(AppDelegateTest, AuthURL_GoodState_SavesTheTokensAndLoadsTheAccount) {
    const QString state = authStore.issuePendingAuthState();
    open(QStringLiteral("velmora://auth?token=t&refresh=r&state=") + state);
    ASSERT_TRUE(authStore.isLoggedIn());
    EXPECT_EQ(authStore.tokens()->accessToken, QStringLiteral("t"));
    EXPECT_EQ(authStore.tokens()->refreshToken, QStringLiteral("r"));
    EXPECT_EQ(account.refreshMeCalls, 1);
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(AppDelegateTest, AuthURL_SameStateTwice_TheSecondIsRejected) {
    const QString state = authStore.issuePendingAuthState();
    open(QStringLiteral("velmora://auth?token=t&refresh=r&state=") + state);
    open(QStringLiteral("velmora://auth?token=x&refresh=y&state=") + state);
    EXPECT_EQ(lines, QStringList{mismatch});
    EXPECT_EQ(authStore.tokens()->accessToken, QStringLiteral("t"));
}

TEST_F(AppDelegateTest, AuthURL_GoodStateAndNoRefresh_StoresNothingSilentlyAndSpendsTheState) {
    const QString state = authStore.issuePendingAuthState();
    open(QStringLiteral("velmora://auth?token=t&state=") + state);
    EXPECT_FALSE(authStore.isLoggedIn());
    EXPECT_TRUE(lines.isEmpty());
    EXPECT_FALSE(authStore.consumePendingAuthState(state));
}

TEST_F(AppDelegateTest, AuthURL_WrongEmptyOrMissingState_IsRejected) {
    (void)authStore.issuePendingAuthState();
    open(QStringLiteral("velmora://auth?token=t&refresh=r&state=wrong"));
    open(QStringLiteral("velmora://auth?token=t&refresh=r&state="));
    open(QStringLiteral("velmora://auth?token=t&refresh=r"));
    open(QStringLiteral("velmora://auth"));
    EXPECT_EQ(lines, (QStringList{mismatch, mismatch, mismatch, mismatch}));
    EXPECT_FALSE(authStore.isLoggedIn());
}

TEST_F(AppDelegateTest, AuthURL_ItemsGivenTwice_TheLastOneCounts) {
    const QString state = authStore.issuePendingAuthState();
    open(QStringLiteral("velmora://auth?token=a&token=b&refresh=r&state=wrong&state=") + state);
    ASSERT_TRUE(authStore.isLoggedIn());
    EXPECT_EQ(authStore.tokens()->accessToken, QStringLiteral("b"));
}

TEST_F(AppDelegateTest, OtherSchemesAndHosts_AreIgnoredWithoutAWord) {
    const QString state = authStore.issuePendingAuthState();
    for (const char* start : {"velmora://Auth", "Velmora://auth", "velmora://elsewhere", "https://auth",
                              "velmora:auth", "velmora://", "velmora:", "", "%%%"})
        open(QLatin1String(start) + QStringLiteral("?token=t&refresh=r&state=") + state);
    EXPECT_TRUE(lines.isEmpty());
    EXPECT_FALSE(authStore.isLoggedIn());
    EXPECT_TRUE(authStore.consumePendingAuthState(state));
}

TEST_F(AppDelegateTest, LegacyMigration_ClearsOnceWhatTheFormerVersionLeft) {
    QDir().mkpath(support);
    const QString oldKey = support + QStringLiteral("/openai-key");
    static constexpr std::array oldSettings{"language",      "useGPTCleanup", "model",        "temperature",
                                            "cleanupPrompt", "developerMode", "promptVersion"};
    const auto leaveOldThings = [&] {
        QFile file(oldKey);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (const char* key : oldSettings)
            defaults.set(QLatin1String(key), true);
        settings.setHasOnboarded(true);
    };
    leaveOldThings();
    defaults.set(QStringLiteral("mode"), QStringLiteral("toggle"));
    app.applicationDidFinishLaunching();
    EXPECT_FALSE(QFile::exists(oldKey));
    EXPECT_FALSE(settings.hasOnboarded());
    for (const char* key : oldSettings)
        EXPECT_FALSE(defaults.contains(QLatin1String(key))) << key;
    EXPECT_EQ(settings.mode(), QStringLiteral("toggle"));
    EXPECT_EQ(defaults.boolean(QStringLiteral("velmora.migratedToSaaS")), true);
    leaveOldThings();
    app.applicationDidFinishLaunching();
    EXPECT_TRUE(QFile::exists(oldKey));
    EXPECT_TRUE(settings.hasOnboarded());
    for (const char* key : oldSettings)
        EXPECT_TRUE(defaults.contains(QLatin1String(key))) << key;
}

TEST_F(AppDelegateTest, Launch_OnboardedAndSignedIn_ShowsTheIconAndNoWindow) {
    becomeUser();
    app.applicationDidFinishLaunching();
    loop.runPosted();
    EXPECT_GT(statusItem.imagesSet, 0);
    EXPECT_EQ(windows.hudsMade, 0);
    EXPECT_EQ(windows.mainWindow.made, 0);
    EXPECT_EQ(windows.onboarding.made, 0);
    EXPECT_FALSE(engineOfViews.isMade());
}

TEST_F(AppDelegateTest, Launch_ViewsAreMadeReadyOnlyOnceTheStartIsOver) {
    app.applicationDidFinishLaunching();
    loop.advance(999ms);
    EXPECT_EQ(windows.prewarms, 0);
    loop.advance(1ms);
    EXPECT_EQ(windows.prewarms, 1);
}

TEST_F(AppDelegateTest, InputMonitoringGrantedLater_StartsTheHotkeyAtOnce) {
    rights.granted.erase(PrivacyRight::InputMonitoring);
    keyboard.activeAllowed = keyboard.listenOnlyAllowed = false;
    app.applicationDidFinishLaunching();
    EXPECT_FALSE(app.hotkey().isActive());
    keyboard.activeAllowed = true;
    rights.granted.insert(PrivacyRight::InputMonitoring);
    statusItem.click(); // the popup looks at the rights
    loop.runPosted();
    EXPECT_TRUE(app.hotkey().isActive());
}

TEST_F(AppDelegateTest, Dictating_OneCapsuleIsPlacedAnewAtEveryStateAndGoesAtTheEnd) {
    app.applicationDidFinishLaunching();
    app.handleCommand(instance_command::Press{});
    EXPECT_FALSE(windows.hudIsShown) << "the microphone comes first";
    loop.runPosted();
    EXPECT_TRUE(windows.hudIsShown);
    EXPECT_EQ(windows.hudSteps, (QStringList{QStringLiteral("reposition"), QStringLiteral("front")}));
    loop.advance(300ms);
    EXPECT_EQ(windows.hudSteps.size(), 8);
    EXPECT_EQ(windows.hudsMade, 1);
    app.handleCommand(instance_command::Release{});
    loop.advance(150ms);
    server.done(QStringLiteral("text"));
    server.finish();
    loop.advance(1s);
    EXPECT_FALSE(windows.hudIsShown);
    app.handleCommand(instance_command::Press{});
    loop.runPosted();
    EXPECT_EQ(windows.hudsMade, 2) << "each dictation has its own";
}

TEST_F(AppDelegateTest, CapsuleSwitchedOffWhileDictating_GoesWithTheNextState) {
    app.applicationDidFinishLaunching();
    app.handleCommand(instance_command::Press{});
    loop.runPosted();
    settings.setShowHUD(false);
    EXPECT_TRUE(windows.hudIsShown);
    loop.advance(100ms);
    EXPECT_FALSE(windows.hudIsShown);
}

TEST_F(AppDelegateTest, DictationFails_TheCapsuleShowsItForSixSeconds) {
    app.applicationDidFinishLaunching();
    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    app.handleCommand(instance_command::Press{});
    loop.runPosted();
    EXPECT_TRUE(windows.hudIsShown);
    loop.advance(6s);
    EXPECT_FALSE(windows.hudIsShown);
}

TEST_F(AppDelegateTest, OpenMain_MeetingsAndTabTogether_MeetingsWin) {
    app.openMain(QStringLiteral("about"), true, true);
    EXPECT_EQ(navigator.screen(), MainScreen::Meetings);
    EXPECT_FALSE(navigator.showSettingsSheet());
}

TEST_F(AppDelegateTest, OpenMain_HistoryWinsOverATab) {
    navigator.openMeetings();
    app.openMain(QStringLiteral("about"), true);
    EXPECT_EQ(navigator.screen(), MainScreen::History);
    EXPECT_FALSE(navigator.showSettingsSheet());
}

TEST_F(AppDelegateTest, OpenMain_WithATab_ShowsTheSettingsThere) {
    app.openMain(QStringLiteral("about"));
    EXPECT_EQ(navigator.settingsTab(), QStringLiteral("about"));
    EXPECT_TRUE(navigator.showSettingsSheet());
}

TEST_F(AppDelegateTest, OpenMainTwice_IsOneWindowBroughtToTheFront) {
    app.openMain({}, true);
    app.openMain({}, true);
    EXPECT_EQ(windows.mainWindow.made, 1);
    EXPECT_EQ(windows.mainWindow.fronts, 2);
}

TEST_F(AppDelegateTest, MainWindowClosed_IsDroppedAndMadeAnewNextTime) {
    app.openMain({}, true);
    windows.mainWindow.close();
    EXPECT_EQ(windows.mainWindow.open, 1) << "it is still at work when it says so";
    loop.runPosted();
    EXPECT_EQ(windows.mainWindow.open, 0);
    app.openMain({}, true);
    EXPECT_EQ(windows.mainWindow.made, 2);
}

TEST_F(AppDelegateTest, MainWindowOpenedAgainWhileItCloses_IsANewOneThatStays) {
    app.openMain({}, true);
    windows.mainWindow.close();
    app.openMain({}, true);
    loop.runPosted();
    EXPECT_EQ(windows.mainWindow.made, 2);
    EXPECT_EQ(windows.mainWindow.open, 1);
}

TEST_F(AppDelegateTest, SecondStart_OpensTheMainWindowWithWhatItShowedLast) {
    becomeUser();
    app.applicationDidFinishLaunching();
    navigator.openMeetings();
    app.handleCommand(instance_command::Activate{});
    EXPECT_EQ(windows.mainWindow.open, 1);
    EXPECT_EQ(navigator.screen(), MainScreen::Meetings);
}

TEST_F(AppDelegateTest, Launch_FirstStart_OpensOnboarding) {
    app.applicationDidFinishLaunching();
    EXPECT_EQ(windows.onboarding.open, 1);
    EXPECT_EQ(windows.onboarding.fronts, 1);
    EXPECT_EQ(windows.mainWindow.made, 0);
}

TEST_F(AppDelegateTest, Launch_FromAFormerVersion_OpensOnboardingThoughItWasOnboarded) {
    settings.setHasOnboarded(true);
    authStore.save(QStringLiteral("a"), QStringLiteral("r"));
    app.applicationDidFinishLaunching();
    EXPECT_EQ(windows.onboarding.open, 1);
}

TEST_F(AppDelegateTest, Launch_OnboardedButSignedOut_OpensOnboarding) {
    becomeUser();
    authStore.clear();
    app.applicationDidFinishLaunching();
    EXPECT_EQ(windows.onboarding.open, 1);
    EXPECT_TRUE(settings.hasOnboarded());
}

TEST_F(AppDelegateTest, Launch_SignedInButNotOnboarded_OpensOnboarding) {
    becomeUser();
    settings.setHasOnboarded(false);
    app.applicationDidFinishLaunching();
    EXPECT_EQ(windows.onboarding.open, 1);
}

TEST_F(AppDelegateTest, OnboardingClosedBeforeItsEnd_CountsAsFinished) {
    app.applicationDidFinishLaunching();
    defaults.set(QStringLiteral("onboardingStep"), qint64(3));
    EXPECT_FALSE(settings.hasOnboarded());
    windows.onboarding.close();
    EXPECT_TRUE(settings.hasOnboarded());
    EXPECT_EQ(windows.onboarding.open, 1) << "it is still at work when it says so";
    loop.runPosted();
    EXPECT_EQ(windows.onboarding.open, 0);
    EXPECT_EQ(defaults.integer(QStringLiteral("onboardingStep")), 3);
}

TEST_F(AppDelegateTest, OnboardingClosed_TheNextStartShowsItOnlyToWhoIsntSignedIn) {
    app.applicationDidFinishLaunching();
    windows.onboarding.close();
    loop.runPosted();
    authStore.save(QStringLiteral("a"), QStringLiteral("r"));
    app.applicationDidFinishLaunching();
    EXPECT_EQ(windows.onboarding.made, 1);
    authStore.clear();
    app.applicationDidFinishLaunching();
    EXPECT_EQ(windows.onboarding.made, 2);
}

TEST_F(AppDelegateTest, OnlyTheOnboardingWindowClosed_CountsAsFinished) {
    app.applicationDidFinishLaunching();
    app.openMain({});
    windows.mainWindow.close();
    loop.runPosted();
    EXPECT_FALSE(settings.hasOnboarded());
    EXPECT_EQ(windows.onboarding.open, 1);
}

TEST_F(AppDelegateTest, MainWindowBesideOnboarding_EachStaysUntilItIsClosedItself) {
    app.applicationDidFinishLaunching();
    app.openMain({}, true);
    EXPECT_EQ(windows.onboarding.open, 1);
    EXPECT_EQ(windows.mainWindow.open, 1);
    windows.onboarding.close();
    loop.runPosted();
    EXPECT_EQ(windows.onboarding.open, 0);
    EXPECT_EQ(windows.mainWindow.open, 1);
}

TEST_F(AppDelegateTest, ShowOnboardingWhileItIsOpen_BringsItToTheFront) {
    app.applicationDidFinishLaunching();
    app.showOnboarding(false);
    EXPECT_EQ(windows.onboarding.made, 1);
    EXPECT_EQ(windows.onboarding.fronts, 2);
}

TEST_F(AppDelegateTest, OnboardingForcedToRestart_IsANewWindowFromTheFirstStep) {
    becomeUser();
    defaults.set(QStringLiteral("onboardingStep"), qint64(5));
    app.showOnboarding(true);
    EXPECT_FALSE(settings.hasOnboarded());
    EXPECT_FALSE(defaults.contains(QStringLiteral("onboardingStep")));
    app.showOnboarding(true);
    EXPECT_EQ(windows.onboarding.made, 2);
    EXPECT_EQ(windows.onboarding.open, 1);
    EXPECT_FALSE(settings.hasOnboarded()) << "the old window was not closed by the user";
}

TEST_F(AppDelegateTest, SecondStartWhileOnboardingIsOpen_BringsThatToTheFront) {
    app.applicationDidFinishLaunching();
    app.handleCommand(instance_command::Activate{});
    EXPECT_EQ(windows.onboarding.fronts, 2);
    EXPECT_EQ(windows.mainWindow.made, 0);
    windows.onboarding.close();
    app.handleCommand(instance_command::Activate{});
    EXPECT_EQ(windows.mainWindow.open, 1);
}

TEST_F(AppDelegateTest, SignInArrivesWhileOnboardingIsOpen_BringsItToTheFront) {
    app.applicationDidFinishLaunching();
    open(QStringLiteral("velmora://auth?token=t&refresh=r&state=forged"));
    EXPECT_EQ(windows.onboarding.fronts, 1);
    open(QStringLiteral("velmora://auth?token=t&refresh=r&state=") + authStore.issuePendingAuthState());
    EXPECT_EQ(windows.onboarding.fronts, 2);
}

TEST_F(AppDelegateTest, SignInArrivesWithoutOnboarding_OpensNoWindow) {
    becomeUser();
    app.applicationDidFinishLaunching();
    open(QStringLiteral("velmora://auth?token=t&refresh=r&state=") + authStore.issuePendingAuthState());
    EXPECT_EQ(windows.onboarding.made, 0);
    EXPECT_EQ(windows.mainWindow.made, 0);
}

TEST_F(AppDelegateTest, TestRecordingFromOnboarding_IsTheSameDictationOfThreeSeconds) {
    app.applicationDidFinishLaunching();
    windows.recordFromOnboarding();
    EXPECT_TRUE(isRecording());
    loop.advance(2999ms);
    EXPECT_TRUE(isRecording());
    loop.advance(151ms);
    EXPECT_EQ(server.requests.size(), 1);
}

TEST_F(AppDelegateTest, TestRecording_IsADictationOfThreeSeconds) {
    app.applicationDidFinishLaunching();
    app.startTestRecording();
    EXPECT_TRUE(isRecording());
    loop.advance(2999ms);
    EXPECT_TRUE(isRecording());
    EXPECT_TRUE(server.requests.isEmpty());
    loop.advance(151ms);
    EXPECT_EQ(server.requests.size(), 1);
}

TEST_F(AppDelegateTest, DismissModalUIThen_ClosesSettingsAndWindowAndCallsBackAMomentLater) {
    app.openMain(QStringLiteral("permissions"));
    bool called = false;
    app.dismissModalUIThen([&] { called = true; });
    EXPECT_FALSE(navigator.showSettingsSheet());
    EXPECT_EQ(windows.mainWindow.open, 0);
    loop.advance(449ms);
    EXPECT_FALSE(called);
    loop.advance(1ms);
    EXPECT_TRUE(called);
}

TEST_F(AppDelegateTest, MicrophoneComesAfterTheStart_IsPrewarmedOnce) {
    rights.granted.erase(PrivacyRight::Microphone);
    app.applicationDidFinishLaunching();
    rights.granted.insert(PrivacyRight::Microphone);
    app.devicesChanged();
    EXPECT_EQ(engine.prepares, 1);
    app.devicesChanged();
    EXPECT_EQ(engine.prepares, 1);
}

TEST_F(AppDelegateTest, PopupsRows_LeadWhereTheySay) {
    app.applicationDidFinishLaunching();
    loop.runPosted(); // the hotkey works
    // Chooses the row of that number: the head, "История", "Созвоны", "Настройки", "О программе", "Выйти".
    const auto choose = [&](int row) {
        statusItem.click();
        QWindow* popup = QGuiApplication::focusWindow();
        ASSERT_TRUE(waitUntil([&] { return (popup = QGuiApplication::focusWindow()) != nullptr; }));
        for (int down = 0; down <= row; ++down)
            QTest::keyClick(popup, Qt::Key_Down);
        const QPointer<QWindow> open(popup);
        QTest::keyClick(popup, Qt::Key_Return);
        ASSERT_TRUE(waitUntil([&] { return open.isNull(); }));
    };
    choose(0);
    EXPECT_TRUE(isRecording());
    navigator.openMeetings();
    choose(1);
    EXPECT_EQ(navigator.screen(), MainScreen::History);
    choose(2);
    EXPECT_EQ(navigator.screen(), MainScreen::Meetings);
    choose(3);
    EXPECT_EQ(navigator.settingsTab(), QStringLiteral("general"));
    EXPECT_TRUE(navigator.showSettingsSheet());
    choose(4);
    EXPECT_EQ(navigator.settingsTab(), QStringLiteral("about"));
    EXPECT_EQ(terminations, 0);
    choose(5);
    EXPECT_EQ(terminations, 1);
    rights.granted.erase(PrivacyRight::Accessibility);
    choose(0);
    EXPECT_EQ(navigator.settingsTab(), QStringLiteral("permissions"));
}
