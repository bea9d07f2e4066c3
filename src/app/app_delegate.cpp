#include "app/app_delegate.h"

#include "backend/sign_in.h"
#include "foundation/log.h"
#include "ui/onboarding/onboarding_model.h"

#include <QFile>
#include <QPointer>

using namespace std::chrono_literals;

namespace velmora {
namespace {

constexpr auto hotkeyRetryInterval = 3s;
constexpr auto testRecordingTime = 3s;
constexpr auto closingTime = 450ms; // of windows, until nothing of them is left on the screen
constexpr auto prewarmDelay = 1s;   // after the start, which has better things to do

} // namespace

AppDelegate::AppDelegate(const Neighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_loop(neighbours.loop)
    , m_defaults(neighbours.defaults)
    , m_settings(neighbours.settings)
    , m_authStore(neighbours.authStore)
    , m_account(neighbours.account)
    , m_signIn(neighbours.signIn)
    , m_navigator(neighbours.navigator)
    , m_windows(neighbours.windows)
    , m_statusItem(neighbours.statusItem)
    , m_screens(neighbours.screens)
    , m_compositing(neighbours.compositing)
    , m_clicks(neighbours.clicks)
    , m_engine(neighbours.engine)
    , m_applicationSupportFolder(neighbours.applicationSupportFolder)
    , m_terminate(neighbours.terminate)
    , m_pipeline(neighbours.pipeline)
    , m_permissions(neighbours.rights)
    , m_hotkey(m_loop, m_defaults, neighbours.taps)
    , m_gate(m_loop, m_settings) {}

void AppDelegate::applicationDidFinishLaunching() {
    runLegacyV1Migration();
    m_pipeline.recorder().removeLeftovers();
    m_permissions.refresh();
    prewarmMicrophone();
    createMenuBar();
    connectGate();
    connectHotkey();
    m_hotkey.start(); // a session that doesn't allow it yet is tried again by the timer
    watchPipeline();
    watchInputMonitoring();
    startHotkeyRetryTimer();
    if (!m_settings.hasOnboarded() || !m_authStore.isLoggedIn())
        showOnboarding(false);
    prewarmWindows();
    reloadAccount();
}

void AppDelegate::handleCommand(const InstanceCommand& command) {
    struct Route {
        AppDelegate& app;
        // Whoever starts the program again looks for it: there may be no tray to find it in. Who is at the
        // first run still looks for that.
        void operator()(const instance_command::Activate&) const {
            app.handleAppBecameActive();
            if (app.m_onboardingWindow)
                app.m_onboardingWindow->makeKeyAndOrderFront();
            else
                app.openMain({});
        }
        void operator()(const instance_command::OpenURL& open) const { app.handleGetURLEvent(open.url); }
        void operator()(const instance_command::Press&) const { app.m_gate.press(); }
        void operator()(const instance_command::Release&) const { app.m_gate.release(); }
        void operator()(const instance_command::Toggle&) const { app.m_gate.toggle(); }
        void operator()(const instance_command::SignIn&) const { app.m_signIn.openLoginURL(); }
    };
    std::visit(Route{*this}, command);
}

// Clears once what a former version, which spoke to a speech provider directly, has left.
void AppDelegate::runLegacyV1Migration() {
    const QString done = QStringLiteral("velmora.migratedToSaaS");
    if (m_defaults.boolean(done).value_or(false))
        return;
    QFile::remove(m_applicationSupportFolder + QStringLiteral("/openai-key"));
    m_settings.setHasOnboarded(false);
    for (const char* key : {"language", "useGPTCleanup", "model", "temperature", "cleanupPrompt",
                            "developerMode", "promptVersion"})
        m_defaults.remove(QLatin1String(key));
    m_defaults.set(done, true);
}

void AppDelegate::prewarmMicrophone() {
    if (m_permissions.micGranted())
        m_pipeline.recorder().prewarm();
}

void AppDelegate::createMenuBar() {
    m_menuBar = std::make_unique<MenuBarController>(MenuBarController::Neighbours{
        .coord = m_pipeline,
        .hotkey = m_hotkey,
        .perms = m_permissions,
        .settings = m_settings,
        .statusItem = m_statusItem,
        .screens = m_screens,
        .compositing = m_compositing,
        .clicks = m_clicks,
        .engine = m_engine,
        .loop = m_loop,
    });
    m_menuBar->onShowSettings = [this] { openMain(QStringLiteral("general")); };
    m_menuBar->onShowHistory = [this] { openMain({}, true); };
    m_menuBar->onShowMeetings = [this] { openMain({}, false, true); };
    m_menuBar->onShowAbout = [this] { openMain(QStringLiteral("about")); };
    m_menuBar->onShowOnboarding = [this] { showOnboarding(true); };
    m_menuBar->onShowPermissions = [this] { openMain(QStringLiteral("permissions")); };
    m_menuBar->onTestRecord = [this] { startTestRecording(); };
    m_menuBar->onQuit = m_terminate;
}

void AppDelegate::connectGate() {
    m_gate.onStart = [this] { m_pipeline.startRecording(); };
    m_gate.onStop = [this] { m_pipeline.stopAndProcess(); };
}

// Press and release are two turns of the main loop, in order.
void AppDelegate::connectHotkey() {
    const auto later = [this](void (HotkeyGestureGate::*step)()) {
        return [this, step] {
            m_loop.post([self = QPointer(this), step] {
                if (self)
                    (self->m_gate.*step)();
            });
        };
    };
    m_hotkey.onPress = later(&HotkeyGestureGate::press);
    m_hotkey.onRelease = later(&HotkeyGestureGate::release);
}

void AppDelegate::watchPipeline() {
    connect(&m_pipeline, &PipelineCoordinator::stateChanged, this, [this](const PipelineState& state) {
        if (const auto* error = std::get_if<pipeline_state::Error>(&state))
            log(QStringLiteral("[Velmora] dictation: ") + error->message);
        m_loop.post([self = QPointer(this), state] {
            if (self)
                self->showHud(state);
        });
    });
}

// At every change, so that a new place or screen counts at once. Each dictation has a capsule of its own.
void AppDelegate::showHud(const PipelineState& state) {
    if (!m_settings.showHUD() || std::holds_alternative<pipeline_state::Idle>(state)) {
        m_hud.reset();
        return;
    }
    if (!m_hud)
        m_hud = m_windows.makeHud(m_pipeline);
    m_hud->reposition();
    m_hud->orderFrontRegardless();
}

void AppDelegate::watchInputMonitoring() {
    connect(&m_permissions, &PermissionManager::inputMonitoringGrantedChanged, this, [this] {
        if (!m_permissions.inputMonitoringGranted())
            return;
        m_loop.post([self = QPointer(this)] {
            if (self)
                self->m_hotkey.start();
        });
    });
}

void AppDelegate::prewarmWindows() {
    m_prewarmTimer = m_loop.after(prewarmDelay, [this] {
        m_windows.prewarm(m_pipeline);
        m_menuBar->prewarm();
    });
}

void AppDelegate::openMain(const std::optional<QString>& tab, bool toHistory, bool toMeetings) {
    if (toMeetings)
        m_navigator.openMeetings();
    else if (toHistory)
        m_navigator.openHistory();
    else if (tab)
        m_navigator.openSettings(*tab);
    if (!m_mainWindow) {
        m_mainWindow = m_windows.makeMainWindow(m_permissions, m_hotkey);
        m_mainWindow->windowWillClose = [this] { windowWillClose(m_mainWindow); };
    }
    m_mainWindow->makeKeyAndOrderFront();
}

void AppDelegate::showOnboarding(bool forceRestart) {
    if (forceRestart) {
        m_settings.setHasOnboarded(false);
        m_onboardingWindow.reset();
        m_defaults.remove(OnboardingModel::storedStepKey);
    }
    if (!m_onboardingWindow) {
        m_onboardingWindow =
            m_windows.makeOnboardingWindow(m_permissions, m_pipeline, [this] { startTestRecording(); });
        m_onboardingWindow->windowWillClose = [this] {
            m_settings.setHasOnboarded(true); // however it was closed
            windowWillClose(m_onboardingWindow);
        };
    }
    m_onboardingWindow->makeKeyAndOrderFront();
}

// The window is still at work when it says so, and goes a turn later; the next one to be opened is another.
void AppDelegate::windowWillClose(std::shared_ptr<AppWindow>& window) {
    m_closingWindows.push_back(std::exchange(window, nullptr));
    m_loop.post([self = QPointer(this)] {
        if (self)
            self->m_closingWindows.clear();
    });
}

void AppDelegate::startTestRecording() {
    m_pipeline.startRecording();
    m_loop.delay(testRecordingTime, [self = QPointer(this)] {
        if (self)
            self->m_pipeline.stopAndProcess();
    });
}

void AppDelegate::dismissModalUIThen(std::function<void()> callback) {
    m_navigator.closeSettings();
    m_mainWindow.reset();
    m_loop.delay(closingTime, std::move(callback));
}

void AppDelegate::startHotkeyRetryTimer() {
    m_hotkeyRetryTimer = m_loop.every(hotkeyRetryInterval, [this] { m_hotkey.ensureEnabled(); });
}

// The comparison of scheme and host is exact; whatever else comes is ignored without a word.
void AppDelegate::handleGetURLEvent(const QString& url) {
    m_loop.post([self = QPointer(this), callback = parseAuthCallback(url)] {
        if (self && callback.scheme == QLatin1String("velmora") && callback.host == QLatin1String("auth"))
            self->handleAuthURL(callback);
    });
}

// The state is spent before anything else is looked at, so that a replayed or forged callback can't store a
// thing.
void AppDelegate::handleAuthURL(const AuthCallback& callback) {
    const QString state = callback.item(QStringLiteral("state"));
    if (state.isEmpty() || !m_authStore.consumePendingAuthState(state)) {
        log(QStringLiteral("velmora_auth_url_rejected: state mismatch"));
        return;
    }
    const QString token = callback.item(QStringLiteral("token"));
    const QString refresh = callback.item(QStringLiteral("refresh"));
    if (token.isEmpty() || refresh.isEmpty())
        return;
    m_authStore.save(token, refresh);
    reloadAccount();
    if (m_onboardingWindow)
        m_onboardingWindow->makeKeyAndOrderFront(); // the browser lies over it
}

void AppDelegate::handleAppBecameActive() {
    m_permissions.refresh();
    m_hotkey.ensureEnabled();
    prewarmMicrophone();
    reloadAccount();
}

void AppDelegate::devicesChanged() {
    const bool hadMicrophone = m_permissions.micGranted();
    m_permissions.refresh();
    if (!hadMicrophone)
        prewarmMicrophone();
}

void AppDelegate::reloadAccount() {
    if (m_authStore.isLoggedIn())
        m_tasks.start(QStringLiteral("account refresh"), m_account.refreshMe());
}

} // namespace velmora
