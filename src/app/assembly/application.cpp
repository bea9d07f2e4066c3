#include "app/assembly/application.h"

#include "backend/backend_url.h"

#include <QStandardPaths>

namespace velmora {
namespace {

// The user's own runtime folder where there is one: recordings are nobody else's business.
QString recordingsFolder() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::TempLocation) : runtime;
}

} // namespace

Application::Application(const Setup& setup)
    : m_defaults(setup.defaultsPath)
    , m_history(setup.supportFolder)
    , m_authStore(setup.supportFolder, m_defaults)
    , m_session(m_transport, m_authStore, m_loop, backendURL(setup.info))
    , m_engine(setup.makeEngine(m_pulse))
    , m_recorder(m_loop, m_defaults, *m_engine, m_codec, recordingsFolder())
    , m_player(m_pulse, resourcePath(QStringLiteral("sounds")))
    , m_pasteQueue(X11PasteQueue::open(m_loop, {}))
    , m_injector(m_loop, m_pasteQueue ? static_cast<Pasteboard&>(*m_pasteQueue) : m_noDesktop,
                 m_pasteQueue ? static_cast<KeyPoster&>(*m_pasteQueue) : m_noDesktop)
    , m_signIn(m_authStore, m_workspace, landingURL(setup.info))
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
          .applicationSupportFolder = setup.supportFolder,
      }) {}

void Application::launch(const InstanceCommand& command) {
    m_delegate.applicationDidFinishLaunching();
    if (command != InstanceCommand(instance_command::Activate{})) // launching is activation enough
        m_delegate.handleCommand(command);
}

void Application::queueCommand(const InstanceCommand& command) {
    m_loop.post([this, command] { m_delegate.handleCommand(command); });
}

} // namespace velmora
