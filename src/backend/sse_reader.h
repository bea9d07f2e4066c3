#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>
#include <vector>

namespace velmora {

struct SseEvent {
    QByteArray name;
    QByteArray data; ///< the "data:" lines, joined by line feeds

    bool operator==(const SseEvent&) const = default;
};

/// Splits a stream of server-sent events as it arrives. Blocks end at two successive line feeds; the result
/// doesn't depend on where the pieces were cut.
class SseReader {
public:
    /// The events that `bytes` completes.
    [[nodiscard]] std::vector<SseEvent> feed(QByteArrayView bytes);
    /// The event of a last block that no empty line ended.
    [[nodiscard]] std::optional<SseEvent> finish();

private:
    QByteArray m_block; // the beginning of a block that isn't complete yet
};

/// The event of one block; none when it isn't UTF-8 or lacks a name or data.
[[nodiscard]] std::optional<SseEvent> parseEventBlock(QByteArrayView block);

} // namespace velmora
