#include "app/assembly/application.h"

#include "backend/backend_url.h"
#include "platform/linux/detached_process.h"
#include "ui/kit/brand_icon.h"

#include <QGuiApplication>
#include <QStandardPaths>

namespace velmora {
namespace {

// The user's own runtime folder where there is one: recordings are nobody else's business.
QString recordingsLocation() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::TempLocation) : runtime;
}

} // namespace

Application::Application()
    : Application(Setup{}) {}

Application::Application(const Setup& setup)
    : m_info(setup.info)
    , m_defaults(setup.defaultsPath)
    , m_history(setup.supportFolder)
    , m_authStore(setup.supportFolder, m_defaults)
    , m_session(m_sessionTransport, m_authStore, m_loop, backendURL(m_info))
    , m_engine(setup.makeEngine(m_pulse, m_devices))
    , m_recordings(recordingsLocation(), QStringLiteral("velmora-recordings"))
    , m_recorder(m_loop, m_defaults, *m_engine, m_codec, m_recordings)
    , m_player(m_pulse, resourcePath(QStringLiteral("sounds")))
    , m_pasteQueue(
          X11PasteQueue::open(m_loop, {.keeper = helperPath(QStringLiteral("velmora-clipboard-keeper"))}))
    , m_injector(m_loop, pasteboard(), keyPoster())
    , m_signIn(m_authStore, m_workspace, landingURL(m_info))
    , m_relauncher({
          .loop = m_loop,
          .executable = QCoreApplication::applicationFilePath(),
          .processId = QCoreApplication::applicationPid(),
          .start = startDetached,
          .dismissModalUIThen =
              [this](std::function<void()> then) { m_delegate.dismissModalUIThen(std::move(then)); },
          .terminate = [] { QCoreApplication::quit(); },
      })
    , m_windows({
          .engine = m_uiEngine,
          .loop = m_loop,
          .settings = m_settings,
          .defaults = m_defaults,
          .screens = m_screens,
          .compositing = m_compositing,
          .navigator = m_navigator,
          .history = m_history,
          .authStore = m_authStore,
          .authSession = m_session,
          .signIn = m_signIn,
          .pasteboard = pasteboard(),
          .workspace = m_workspace,
          .info = m_info,
          .relauncher = m_relauncher,
          .keys = m_keyMonitors,
          .inputs = m_devices,
          .levelTest = m_levelTest,
      })
    , m_delegate({
          .loop = m_loop,
          .defaults = m_defaults,
          .settings = m_settings,
          .taps = m_taps,
          .authStore = m_authStore,
          .account = m_session,
          .signIn = m_signIn,
          .pipeline = {.loop = m_loop,
                       .recorder = m_recorder,
                       .settings = m_settings,
                       .history = m_history,
                       .dictation = m_dictation,
                       .account = m_session,
                       .injector = m_injector,
                       .sounds = m_sounds,
                       .workspace = m_workspace},
          .rights = m_rights,
          .navigator = m_navigator,
          .windows = m_windows,
          .statusItem = m_statusItem,
          .screens = m_screens,
          .compositing = m_compositing,
          .clicks = m_clicks,
          .engine = m_uiEngine,
          .applicationSupportFolder = setup.supportFolder,
          .terminate = [] { QCoreApplication::quit(); },
      }) {
    QObject::connect(&m_activation, &ActivationObserver::becameActive, &m_delegate, [this] {
        m_delegate.handleAppBecameActive();
        m_screenRecordingMonitor.applicationBecameActive();
    });
    const auto setIcon = [this] { QGuiApplication::setWindowIcon(brandIcon(m_theme.accent())); };
    QObject::connect(&m_theme, &VTheme::changed, &m_delegate, setIcon);
    setIcon();
    // A sound server may come up after the program.
    QObject::connect(&m_devices, &PulseDevices::changed, &m_delegate,
                     [this] { m_delegate.devicesChanged(); });
}

Pasteboard& Application::pasteboard() {
    return m_pasteQueue ? static_cast<Pasteboard&>(*m_pasteQueue) : m_noDesktop;
}

KeyPoster& Application::keyPoster() {
    return m_pasteQueue ? static_cast<KeyPoster&>(*m_pasteQueue) : m_noDesktop;
}

void Application::launch(const InstanceCommand& command) {
    m_delegate.applicationDidFinishLaunching();
    if (command != InstanceCommand(instance_command::Activate{})) // launching is activation enough
        m_delegate.handleCommand(command);
}

void Application::queueCommand(const InstanceCommand& command) {
    m_loop.post([this, command] { m_delegate.handleCommand(command); });
}

} // namespace velmora
