#pragma once

#include "core/pipeline_coordinator.h"
#include "core/text_injector.h"
#include "platform/key_poster.h"
#include "platform/notifications.h"

#include <QObject>

namespace velmora {

/// Tells the user when a dictation didn't reach the window it was for, and lets it be copied. Waits for the
/// dictation's end, for only that brings the text into the history.
class UndeliveredText : public QObject {
public:
    UndeliveredText(const PipelineCoordinator& pipeline, KeyPoster& keys, TextInjector& injector,
                    Notifications& notifications);

private:
    void tellUnlessUnderWay();

    const PipelineCoordinator& m_pipeline;
    TextInjector& m_injector;
    Notifications& m_notifications;
    QString m_undelivered;
};

} // namespace velmora
