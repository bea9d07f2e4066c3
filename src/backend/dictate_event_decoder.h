#pragma once

#include "backend/backend_coder.h"
#include "backend/dictate_event.h"
#include "backend/sse_reader.h"

namespace velmora {

/// What of a "done" event must be there.
struct DonePayloadMinimal {
    QString text;
    qint64 wordCount = 0;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("text", &DonePayloadMinimal::text),
                          json::field("wordCount", &DonePayloadMinimal::wordCount));
    }
};

/// All of a "done" event: here further optional keys join. One that is of no use can't lose the text.
struct DonePayload {
    QString text;
    qint64 wordCount = 0;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("text", &DonePayload::text),
                          json::field("wordCount", &DonePayload::wordCount));
    }
};

void logDoneFallback(const QByteArray& data);

/// Reads a Payload, or else a DonePayloadMinimal. Throws json::DecodingError when it is neither.
template<typename Payload>
[[nodiscard]] dictate_event::Done decodeDone(const QByteArray& data) {
    try {
        Payload done = backendCoder.decode<Payload>(data);
        return {std::move(done.text), done.wordCount};
    } catch (const json::DecodingError&) {
        DonePayloadMinimal done = backendCoder.decode<DonePayloadMinimal>(data);
        logDoneFallback(data);
        return {std::move(done.text), done.wordCount};
    }
}

/// None for an unknown name and for data that don't fit the name.
[[nodiscard]] std::optional<DictateEvent> decodeDictateEvent(const SseEvent& event);

} // namespace velmora
