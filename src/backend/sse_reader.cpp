#include "backend/sse_reader.h"

#include <QUtf8StringView>

namespace velmora {
namespace {

template<typename Predicate>
QByteArrayView trimmed(QByteArrayView text, Predicate drop) {
    while (!text.isEmpty() && drop(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && drop(text.back()))
        text.chop(1);
    return text;
}

bool isReturn(char c) {
    return c == '\r';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

} // namespace

std::vector<SseEvent> SseReader::feed(QByteArrayView bytes) {
    std::vector<SseEvent> events;
    const auto take = [&events](QByteArrayView block) {
        if (std::optional<SseEvent> event = parseEventBlock(block))
            events.push_back(*std::move(event));
    };
    if (m_block.endsWith('\n') && bytes.startsWith('\n')) {
        take(QByteArrayView(m_block).chopped(1));
        m_block.clear();
        bytes = bytes.sliced(1);
    }
    qsizetype end = bytes.indexOf("\n\n");
    if (end >= 0 && !m_block.isEmpty()) {
        m_block.append(bytes.first(end));
        take(m_block);
        m_block.clear();
        bytes = bytes.sliced(end + 2);
        end = bytes.indexOf("\n\n");
    }
    for (; end >= 0; end = bytes.indexOf("\n\n")) {
        take(bytes.first(end));
        bytes = bytes.sliced(end + 2);
    }
    m_block.append(bytes);
    return events;
}

std::optional<SseEvent> SseReader::finish() {
    return parseEventBlock(std::exchange(m_block, {}));
}

std::optional<SseEvent> parseEventBlock(QByteArrayView block) {
    if (!QUtf8StringView(block.data(), block.size()).isValidUtf8())
        return std::nullopt;
    SseEvent event;
    bool named = false;
    bool hasData = false;
    while (true) {
        const qsizetype end = block.indexOf('\n');
        const QByteArrayView line = trimmed(end < 0 ? block : block.first(end), isReturn);
        if (line.startsWith("event:")) {
            event.name = trimmed(line.sliced(6), isBlank).toByteArray();
            named = true;
        } else if (line.startsWith("data:")) {
            if (hasData)
                event.data += '\n';
            event.data += trimmed(line.sliced(5), isBlank);
            hasData = true;
        }
        if (end < 0)
            break;
        block = block.sliced(end + 1);
    }
    return named && hasData ? std::optional(std::move(event)) : std::nullopt;
}

} // namespace velmora
