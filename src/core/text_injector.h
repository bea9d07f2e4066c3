#pragma once

#include "foundation/main_loop.h"
#include "platform/key_poster.h"
#include "platform/pasteboard.h"

#include <optional>

namespace velmora {

/// Puts text into whatever application has the keyboard focus: the text goes on the pasteboard, the paste
/// chord is posted, and what the user had there is put back afterwards.
/// Nothing guards pieces or restores against each other here: how long a text must stay for the target to
/// read it is the pasteboard's business.
class TextInjector {
public:
    TextInjector(MainLoop& loop, Pasteboard& pasteboard, KeyPoster& keys);

    /// One text, with the pasteboard put back after it.
    void paste(const QString& text);
    /// Replaces the pasteboard; nothing is typed and nothing put back.
    void copyToClipboard(const QString& text);

    /// Keeps the user's clipboard until the session is finished. An open session goes on with what it has
    /// kept.
    void startIncrementalSession();
    /// One piece; without a session the same as paste().
    void pasteIncremental(const QString& text);
    void finishIncrementalSession();

private:
    void restoreLater(Pasteboard::Saved saved);

    MainLoop& m_loop;
    Pasteboard& m_pasteboard;
    KeyPoster& m_keys;
    std::optional<Pasteboard::Saved> m_sessionSavedClipboard; // while a session is open
};

} // namespace velmora
