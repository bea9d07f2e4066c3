// The SSE reader must give what a reader gives that looks at its whole buffer after every byte, wherever the
// stream was cut; and no event may upset the decoder of the dictation's events.

#include "backend/dictate_event_decoder.h"
#include "backend/sse_reader.h"
#include "foundation/log.h"
#include "fuzz.h"

#include <QStringDecoder>

#include <string>

using namespace velmora;

namespace {

constexpr std::size_t maximumSize = 4096; // the naive reader takes the square of it

std::string trimmed(const std::string& text, const char* characters) {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::optional<SseEvent> naiveBlock(const std::string& block) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = utf8(QByteArrayView(block.data(), qsizetype(block.size())));
    if (utf8.hasError())
        return std::nullopt;
    std::optional<std::string> name;
    std::vector<std::string> chunks;
    std::size_t from = 0;
    while (from <= block.size()) {
        const std::size_t end = std::min(block.find('\n', from), block.size());
        const std::string line = trimmed(block.substr(from, end - from), "\r");
        if (line.rfind("event:", 0) == 0)
            name = trimmed(line.substr(6), " \t");
        if (line.rfind("data:", 0) == 0)
            chunks.push_back(trimmed(line.substr(5), " \t"));
        from = end + 1;
    }
    if (!name || chunks.empty())
        return std::nullopt;
    std::string data = chunks[0];
    for (std::size_t i = 1; i < chunks.size(); ++i)
        data += "\n" + chunks[i];
    return SseEvent{QByteArray::fromStdString(*name), QByteArray::fromStdString(data)};
}

std::vector<SseEvent> naiveRead(const std::string& bytes) {
    std::vector<SseEvent> events;
    const auto take = [&events](const std::string& block) {
        if (std::optional<SseEvent> event = naiveBlock(block))
            events.push_back(*event);
    };
    std::string buffer;
    for (const char byte : bytes) {
        buffer += byte;
        for (std::size_t end; (end = buffer.find("\n\n")) != std::string::npos;) {
            take(buffer.substr(0, end));
            buffer.erase(0, end + 2);
        }
    }
    if (!buffer.empty())
        take(buffer);
    return events;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > maximumSize)
        return 0;
    // The first byte chooses how the rest is cut.
    std::uint32_t cut = data[0];
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

    SseReader reader;
    std::vector<SseEvent> events;
    for (std::size_t from = 0; from < bytes.size();) {
        cut = cut * 1664525 + 1013904223;
        const std::size_t length = std::min<std::size_t>(1 + (cut >> 24) % 17, bytes.size() - from);
        for (SseEvent& event : reader.feed(QByteArrayView(bytes.data() + from, qsizetype(length))))
            events.push_back(std::move(event));
        from += length;
    }
    if (std::optional<SseEvent> event = reader.finish())
        events.push_back(*std::move(event));
    fuzz::require(events == naiveRead(bytes), "the events are those of the naive reader");

    const LogCapture silence([](const QString&) {});
    for (const SseEvent& event : events)
        (void)decodeDictateEvent(event);
    return 0;
}
