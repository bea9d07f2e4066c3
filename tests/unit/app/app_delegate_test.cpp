#include "app/app_delegate.h"
#include "backend/sign_in.h"
#include "foundation/log.h"
#include "support/fake_audio.h"
#include "support/fake_backend.h"
#include "support/fake_desktop.h"
#include "support/fake_event_tap.h"
#include "support/hand_loop.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

const QString mismatch = QStringLiteral("velmora_auth_url_rejected: state mismatch");

class AppDelegateTest : public testing::Test {
protected:
    void open(const QString& url) {
        app.handleCommand(instance_command::OpenURL{url});
        loop.runPosted();
    }
    [[nodiscard]] bool isRecording() const {
        return std::holds_alternative<pipeline_state::Recording>(app.pipeline().state());
    }

    QStringList lines;
    LogCapture capture{[this](const QString& line) { lines.append(line); }};
    HandLoop loop;
    QTemporaryDir folder;
    QString support = folder.filePath(QStringLiteral("Velmora"));
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    AppSettings settings{defaults};
    FakeAudioEngine engine;
    FakeAudioCodec codec;
    AudioRecorder recorder{loop, defaults, engine, codec, folder.path()};
    HistoryStore history{support};
    AuthStore authStore{support, defaults};
    FakeDictateService server;
    FakeAccountSession account;
    FakeDesktop desktop;
    TextInjector injector{loop, desktop, desktop};
    FakeSoundPlayer player;
    SoundCue sounds{settings, player};
    FakeWorkspace workspace;
    SignIn signIn{authStore, workspace, QStringLiteral("https://landing.test")};
    FakeEventTapFactory keyboard;
    AppDelegate app{{
        .loop = loop,
        .defaults = defaults,
        .settings = settings,
        .taps = keyboard,
        .authStore = authStore,
        .account = account,
        .signIn = signIn,
        .pipeline = {loop, recorder, settings, history, server, account, injector, sounds, workspace},
        .applicationSupportFolder = support,
    }};
};

} // namespace

TEST_F(AppDelegateTest, Launch_MicrophoneAllowed_PrewarmsItAndStartsTheHotkey) {
    app.applicationDidFinishLaunching();
    loop.runPosted();
    EXPECT_EQ(engine.prepares, 1);
    EXPECT_TRUE(app.hotkey().isActive());
}

TEST_F(AppDelegateTest, Launch_MicrophoneNotAllowed_IsNoErrorAndTheFirstPressReportsIt) {
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
    const auto leaveOldThings = [&] {
        QFile file(oldKey);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (const char* key : {"language", "useGPTCleanup", "model", "temperature", "cleanupPrompt",
                                "developerMode", "promptVersion"})
            defaults.set(QLatin1String(key), true);
        settings.setHasOnboarded(true);
    };
    leaveOldThings();
    defaults.set(QStringLiteral("mode"), QStringLiteral("toggle"));
    app.applicationDidFinishLaunching();
    EXPECT_FALSE(QFile::exists(oldKey));
    EXPECT_FALSE(settings.hasOnboarded());
    EXPECT_FALSE(defaults.contains(QStringLiteral("temperature")));
    EXPECT_FALSE(defaults.contains(QStringLiteral("promptVersion")));
    EXPECT_EQ(settings.mode(), QStringLiteral("toggle"));
    EXPECT_EQ(defaults.boolean(QStringLiteral("velmora.migratedToSaaS")), true);
    leaveOldThings();
    app.applicationDidFinishLaunching();
    EXPECT_TRUE(QFile::exists(oldKey));
    EXPECT_TRUE(settings.hasOnboarded());
}
