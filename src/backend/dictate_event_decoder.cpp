#include "backend/dictate_event_decoder.h"

#include "foundation/log.h"

namespace velmora {
namespace {

struct StatusPayload {
    QString stage;

    static constexpr auto jsonFields() { return std::tuple(json::field("stage", &StatusPayload::stage)); }
};

struct ChunkPayload {
    QString delta;

    static constexpr auto jsonFields() { return std::tuple(json::field("delta", &ChunkPayload::delta)); }
};

struct ErrorPayload {
    std::optional<QString> code;
    std::optional<QString> message;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("code", &ErrorPayload::code),
                          json::field("message", &ErrorPayload::message));
    }
};

QString preview(const QByteArray& data) {
    constexpr qsizetype length = 200;
    return QString::fromUtf8(data).left(length);
}

std::optional<DictateEvent> decode(const SseEvent& event) {
    if (event.name == "status")
        return dictate_event::Status{backendCoder.decode<StatusPayload>(event.data).stage};
    if (event.name == "chunk")
        return dictate_event::Chunk{backendCoder.decode<ChunkPayload>(event.data).delta};
    if (event.name == "done")
        return decodeDone<DonePayload>(event.data);
    if (event.name != "error")
        return std::nullopt;
    const auto error = backendCoder.decode<ErrorPayload>(event.data);
    return dictate_event::Error{error.code.value_or(QStringLiteral("unknown")),
                                error.message.value_or(QStringLiteral("Ошибка сервера"))};
}

} // namespace

void logDoneFallback(const QByteArray& data) {
    log(QStringLiteral("Velmora: SSE done read through the minimal payload, preview: ") + preview(data));
}

std::optional<DictateEvent> decodeDictateEvent(const SseEvent& event) {
    try {
        return decode(event);
    } catch (const json::DecodingError& error) {
        const QString reason = error.localizedDescription();
        if (event.name == "chunk")
            log(QStringLiteral("Velmora: failed to decode SSE chunk: ") + reason);
        else if (event.name == "done")
            log(QStringLiteral("Velmora: failed to decode SSE done: %1 payload preview: %2")
                    .arg(reason, preview(event.data)));
        return std::nullopt;
    }
}

} // namespace velmora
