#include "app/app_delegate.h"

#include "backend/sign_in.h"
#include "foundation/log.h"

#include <QFile>
#include <QPointer>

namespace velmora {
namespace {

constexpr auto hotkeyRetryInterval = std::chrono::seconds(3);

} // namespace

AppDelegate::AppDelegate(const Neighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_loop(neighbours.loop)
    , m_defaults(neighbours.defaults)
    , m_settings(neighbours.settings)
    , m_authStore(neighbours.authStore)
    , m_account(neighbours.account)
    , m_signIn(neighbours.signIn)
    , m_applicationSupportFolder(neighbours.applicationSupportFolder)
    , m_pipeline(neighbours.pipeline)
    , m_hotkey(m_loop, m_defaults, neighbours.taps)
    , m_gate(m_loop, m_settings) {}

void AppDelegate::applicationDidFinishLaunching() {
    runLegacyV1Migration();
    m_pipeline.recorder().removeLeftovers();
    prewarmMicrophone();
    connectGate();
    connectHotkey();
    m_hotkey.start(); // a session that doesn't allow it yet is tried again by the timer
    watchPipeline();
    startHotkeyRetryTimer();
    reloadAccount();
}

void AppDelegate::handleCommand(const InstanceCommand& command) {
    struct Route {
        AppDelegate& app;
        void operator()(const instance_command::Activate&) const { app.handleAppBecameActive(); }
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
    m_pipeline.recorder().prewarm();
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

// Until something on the screen shows them, failures are for whoever reads the log.
void AppDelegate::watchPipeline() {
    connect(&m_pipeline, &PipelineCoordinator::stateChanged, this, [](const PipelineState& state) {
        if (const auto* error = std::get_if<pipeline_state::Error>(&state))
            log(QStringLiteral("[Velmora] dictation: ") + error->message);
    });
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
}

void AppDelegate::handleAppBecameActive() {
    m_hotkey.ensureEnabled();
    prewarmMicrophone();
    reloadAccount();
}

void AppDelegate::reloadAccount() {
    if (m_authStore.isLoggedIn())
        m_tasks.start(QStringLiteral("account refresh"), m_account.refreshMe());
}

} // namespace velmora
