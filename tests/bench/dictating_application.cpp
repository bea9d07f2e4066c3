#include "dictating_application.h"

#include "lasting_token.h"
#include "result.h"
#include "support/onboarded_defaults.h"

#include <QFile>

namespace velmora::bench {
namespace {

QString defaultsOf(const QTemporaryDir& folder) {
    QFile file(folder.filePath(QStringLiteral("defaults.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(test::onboardedDefaults()) < 0)
        throw NotMeasured(file.errorString());
    return file.fileName();
}

} // namespace

DictatingApplication::DictatingApplication(quint16 backendPort)
    : m_application({
          .info = InfoDictionary(
              {{QStringLiteral("VelmorBackendURL"), QStringLiteral("http://127.0.0.1:%1").arg(backendPort)}}),
          .supportFolder = m_folder.path(),
          .defaultsPath = defaultsOf(m_folder),
          .makeEngine =
              [this](PulseConnection& pulse, PulseDevices& devices) {
                  auto engine =
                      std::make_unique<TimedAudioEngine>(std::make_unique<PulseAudioEngine>(pulse, &devices));
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
