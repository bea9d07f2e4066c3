#include "dictating_application.h"

#include "lasting_token.h"

namespace velmora::bench {
DictatingApplication::DictatingApplication(quint16 backendPort)
    : m_application({
          .info = InfoDictionary(
              {{QStringLiteral("VelmorBackendURL"), QStringLiteral("http://127.0.0.1:%1").arg(backendPort)}}),
          .supportFolder = m_folder.path(),
          .defaultsPath = m_folder.filePath(QStringLiteral("defaults.json")),
          .makeEngine =
              [this](PulseConnection& pulse) {
                  auto engine = std::make_unique<TimedAudioEngine>(std::make_unique<PulseAudioEngine>(pulse));
                  m_engine = engine.get();
                  return engine;
              },
      }) {
    m_application.authStore().save(lastingToken(), QStringLiteral("refresh"));
    AppDelegate& delegate = m_application.delegate();
    QObject::connect(&delegate.pipeline(), &PipelineCoordinator::stateChanged, &delegate,
                     [this](const PipelineState& state) { noteState(state); });
    delegate.applicationDidFinishLaunching();
}

void DictatingApplication::noteState(const PipelineState& state) {
    if (std::holds_alternative<pipeline_state::Idle>(state))
        m_idle = Clock::now();
    else if (const auto* error = std::get_if<pipeline_state::Error>(&state))
        m_failure = error->message;
}

} // namespace velmora::bench
