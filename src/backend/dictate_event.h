#pragma once

#include <QString>

#include <variant>

namespace velmora {

/// What the backend tells while it works on one dictation.
namespace dictate_event {

/// Progress; the stage names are the server's.
struct Status {
    QString stage;
    bool operator==(const Status&) const = default;
};
/// A piece of text.
struct Chunk {
    QString delta;
    bool operator==(const Chunk&) const = default;
};
/// The final result; ends the stream.
struct Done {
    QString text;
    qint64 wordCount = 0;
    bool operator==(const Done&) const = default;
};
/// The server reports a failure; ends the stream.
struct Error {
    QString code;
    QString message;
    bool operator==(const Error&) const = default;
};

} // namespace dictate_event

using DictateEvent =
    std::variant<dictate_event::Status, dictate_event::Chunk, dictate_event::Done, dictate_event::Error>;

} // namespace velmora
