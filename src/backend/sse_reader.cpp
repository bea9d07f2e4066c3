#include "backend/sse_reader.h"

#include <QUtf8StringView>

namespace velmora {
namespace {

template<char... characters>
QByteArrayView trimmed(QByteArrayView text) {
    const auto isOneOf = [](char c) { return ((c == characters) || ...); };
    while (!text.isEmpty() && isOneOf(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isOneOf(text.back()))
        text.chop(1);
    return text;
}

// Where a block ends, or -1. Much quicker than a search for "\n\n".
qsizetype endOfBlock(QByteArrayView bytes) {
    qsizetype end = bytes.indexOf('\n');
    while (end >= 0 && !bytes.sliced(end + 1).startsWith('\n'))
        end = bytes.indexOf('\n', end + 1);
    return end;
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
    qsizetype end = endOfBlock(bytes);
    if (end >= 0 && !m_block.isEmpty()) {
        m_block.append(bytes.first(end));
        take(m_block);
        m_block.clear();
        bytes = bytes.sliced(end + 2);
        end = endOfBlock(bytes);
    }
    for (; end >= 0; end = endOfBlock(bytes)) {
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
        const QByteArrayView line = trimmed<'\r'>(end < 0 ? block : block.first(end));
        if (line.startsWith("event:")) {
            event.name = trimmed<' ', '\t'>(line.sliced(6)).toByteArray();
            named = true;
        } else if (line.startsWith("data:")) {
            const QByteArrayView data = trimmed<' ', '\t'>(line.sliced(5));
            if (std::exchange(hasData, true))
                event.data.append('\n').append(data);
            else
                event.data = data.toByteArray();
        }
        if (end < 0)
            break;
        block = block.sliced(end + 1);
    }
    return named && hasData ? std::optional(std::move(event)) : std::nullopt;
}

} // namespace velmora
