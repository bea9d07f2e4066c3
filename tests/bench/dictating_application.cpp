#include "dictating_application.h"

#include "foundation/user_folders.h"
#include "result.h"

namespace velmora::bench {
namespace {

std::unique_ptr<X11PasteQueue> openPasteQueue(MainLoop& loop) {
    std::unique_ptr<X11PasteQueue> queue = X11PasteQueue::open(loop, {});
    if (!queue)
        throw NotMeasured(QStringLiteral("no X server with XTEST and XFIXES"));
    return queue;
}

/// A token that doesn't end before the century does.
QString lastingToken() {
    const QByteArray claims = QByteArray(R"({"exp":4102444800})").toBase64(QByteArray::Base64UrlEncoding);
    return QStringLiteral("e30.%1.c2ln").arg(QString::fromLatin1(claims));
}

} // namespace

DictatingApplication::DictatingApplication(quint16 backendPort)
    : m_defaults(m_folder.filePath(QStringLiteral("defaults.json")))
    , m_history(m_folder.path())
    , m_authStore(m_folder.path(), m_defaults)
    , m_session(m_transport, m_authStore, m_loop,
                QUrl(QStringLiteral("http://127.0.0.1:%1").arg(backendPort), QUrl::StrictMode))
    , m_recorder(m_loop, m_defaults, m_engine, m_codec, m_folder.path())
    , m_player(m_pulse, resourcePath(QStringLiteral("sounds")))
    , m_pasteQueue(openPasteQueue(m_loop))
    , m_injector(m_loop, *m_pasteQueue, *m_pasteQueue)
    , m_signIn(m_authStore, m_workspace, QString())
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
          .applicationSupportFolder = m_folder.path(),
      }) {
    m_authStore.save(lastingToken(), QStringLiteral("refresh"));
    QObject::connect(&m_delegate.pipeline(), &PipelineCoordinator::stateChanged, &m_delegate,
                     [this](const PipelineState& state) { noteState(state); });
    m_delegate.applicationDidFinishLaunching();
}

void DictatingApplication::noteState(const PipelineState& state) {
    if (std::holds_alternative<pipeline_state::Idle>(state))
        m_idle = Clock::now();
    else if (const auto* error = std::get_if<pipeline_state::Error>(&state))
        m_failure = error->message;
}

} // namespace velmora::bench
