#pragma once

#include "platform/clipboard_contents.h"

#include <functional>
#include <memory>
#include <optional>

namespace velmora {

/// The window that a text goes into.
struct PasteTarget {
    quint64 window = 0;
    quint64 client = 0;      ///< the program it belongs to, as its reads of the clipboard show it
    bool isTerminal = false; ///< a line break in it runs something

    bool operator==(const PasteTarget&) const = default;
};

/// What a window system does for the line of pastes, which it tells in turn who reads.
class PasteSystem {
public:
    virtual ~PasteSystem() = default;

    /// The window that has the keyboard focus at this moment, if any has.
    [[nodiscard]] virtual std::optional<PasteTarget> focused() = 0;
    /// Makes the text what the target finds when it pastes. Returns the number by which its reads are told.
    virtual quint64 putUp(const QByteArray& text, const PasteTarget& target) = 0;
    /// Posts the chord by which the target pastes if it has the focus, and tells whether it has.
    virtual bool postChord(const PasteTarget& target) = 0;
    /// Whether the target's window tells a ping that its program has come back to its events.
    [[nodiscard]] virtual bool answersPings(const PasteTarget& target) = 0;
    /// Sends it one. Not to a window that doesn't answer them: it may take it for something else.
    virtual void ping(const PasteTarget& target) = 0;
    /// Puts on the clipboard what is for the user, or clears it.
    virtual void offer(const ClipboardContents& contents) = 0;
    /// Gives back what putUp() took besides the clipboard.
    virtual void giveBackTheRest() = 0;

    /// Whether what was put up or offered last is still there.
    [[nodiscard]] virtual bool ownsClipboard() = 0;
    /// Asks another program for what it has on the clipboard; null if there is nothing. It may come in after
    /// the clipboard has another owner. `done` is called later, when it is complete or the program has not
    /// gone on for a moment, and never if the result is dropped before.
    [[nodiscard]] virtual std::shared_ptr<const FetchedClipboard> fetch(std::function<void()> done) = 0;
};

} // namespace velmora
