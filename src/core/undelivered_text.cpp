#include "core/undelivered_text.h"

namespace velmora {

UndeliveredText::UndeliveredText(const PipelineCoordinator& pipeline, KeyPoster& keys, TextInjector& injector,
                                 Notifications& notifications)
    : m_pipeline(pipeline)
    , m_injector(injector)
    , m_notifications(notifications) {
    keys.onUndelivered([this](const QString& text) {
        m_undelivered += text;
        tellUnlessUnderWay();
    });
    connect(&pipeline, &PipelineCoordinator::stateChanged, this, &UndeliveredText::tellUnlessUnderWay);
}

void UndeliveredText::tellUnlessUnderWay() {
    const PipelineState& state = m_pipeline.state();
    if (m_undelivered.isEmpty() || std::holds_alternative<pipeline_state::Transcribing>(state) ||
        std::holds_alternative<pipeline_state::Cleaning>(state))
        return;
    const QString undelivered = std::exchange(m_undelivered, {});
    // A dictation that has failed leaves nothing in the history.
    const bool isInHistory = m_pipeline.lastResult() && !std::holds_alternative<pipeline_state::Error>(state);
    m_notifications.show({
        .title = QStringLiteral("Текст не вставлен"),
        .body = isInHistory ? QStringLiteral("Окно его не приняло. Текст сохранён в истории.")
                            : QStringLiteral("Окно его не приняло."),
        .actionLabel = QStringLiteral("Скопировать"),
        .action = [this, text = isInHistory ? m_pipeline.lastResult()->cleanedText
                                            : undelivered] { m_injector.copyToClipboard(text); },
    });
}

} // namespace velmora
