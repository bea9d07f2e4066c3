#include "ui/onboarding/tutorial_model.h"

#include "core/hotkey_label.h"
#include "core/pipeline_coordinator.h"

namespace velmora {

TutorialModel::TutorialModel(const AppSettings& settings, const PipelineCoordinator& pipeline,
                             std::function<void()> startTestRecording, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_pipeline(pipeline)
    , m_startTestRecording(std::move(startTestRecording)) {
    for (const auto changed : hotkeyLabelChanges)
        connect(&settings, changed, this, &TutorialModel::keyChanged);
    connect(&pipeline, &PipelineCoordinator::stateChanged, this, &TutorialModel::follow);
}

QString TutorialModel::keyLabel() const {
    return hotkeyLabel(m_settings);
}

QString TutorialModel::keyNote() const {
    const QString label = keyLabel();
    return label == QLatin1String("Fn") ? fnStandInNote(m_settings)
                                        : QStringLiteral("Вместо Fn у тебя — %1").arg(label);
}

bool TutorialModel::isRecording() const {
    return std::holds_alternative<pipeline_state::Recording>(m_pipeline.state());
}

QString TutorialModel::hint() const {
    return isRecording() ? QStringLiteral("Записываем…") : QStringLiteral("Зажми Fn и говори");
}

bool TutorialModel::canRecord() const {
    return std::holds_alternative<pipeline_state::Idle>(m_pipeline.state());
}

void TutorialModel::record() {
    if (canRecord())
        m_startTestRecording();
}

// The pipeline takes its sentence back after a while; here it stays until the next try.
void TutorialModel::follow(const PipelineState& state) {
    if (const auto* error = std::get_if<pipeline_state::Error>(&state))
        setProblem(error->message);
    else if (!std::holds_alternative<pipeline_state::Idle>(state))
        setProblem({});
    Q_EMIT stateChanged();
}

void TutorialModel::setProblem(const QString& problem) {
    if (std::exchange(m_problem, problem) != problem)
        Q_EMIT problemChanged();
}

} // namespace velmora
