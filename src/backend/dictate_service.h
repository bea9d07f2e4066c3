#pragma once

#include "backend/dictate_event.h"
#include "foundation/async_stream.h"

namespace velmora {

/// Turns one finished audio file into text.
class DictateService {
public:
    virtual ~DictateService() = default;

    /// Returns at once; the work has begun. Server failures arrive as events, the client's own (no network,
    /// an expired session) as the failure that ends the stream. Dropping the stream cancels the work.
    [[nodiscard]] virtual AsyncStream<DictateEvent>
    dictate(QString audioFile, QString mimeType = QStringLiteral("audio/m4a")) = 0;
};

} // namespace velmora
