#pragma once

#include "foundation/main_loop.h"
#include "platform/key_poster.h"
#include "platform/pasteboard.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace velmora {

/// The clipboard and the paste chord of an X11 session. What is written and then posted in one turn of the
/// main loop is a piece for the window in front: it stays on the clipboard until that window has read it, and
/// clipboard managers are asked not to keep it. What is only written is the user's.
///
/// The work is done on a thread of its own, so that a window of this process can be pasted into although its
/// toolkit blocks the main thread while it reads.
class X11PasteQueue final : public Pasteboard, public KeyPoster {
public:
    struct Options {
        QByteArray display = {};        ///< empty for the session's own
        QStringList moreTerminals = {}; ///< WM_CLASS names of programs to treat as terminals
    };

    /// Null when there is no X server, or one without XTEST and XFIXES.
    [[nodiscard]] static std::unique_ptr<X11PasteQueue> open(MainLoop& loop, const Options& options);
    /// Puts the user's text back if that is still due, and leaves it with the desktop's clipboard manager.
    ~X11PasteQueue() override;
    X11PasteQueue(const X11PasteQueue&) = delete;
    X11PasteQueue& operator=(const X11PasteQueue&) = delete;

    /// Waits for the program that owns the clipboard, for 0.3 s without any progress at most.
    [[nodiscard]] std::optional<QString> string() override;
    void clearContents() override;
    void setString(const QString& text) override;
    void postPasteChord() override;

private:
    class Worker;
    // Written, but it isn't known yet whether a chord follows.
    struct Unsent {
        std::optional<QString> text;
    };

    X11PasteQueue(MainLoop& loop, std::unique_ptr<Worker> worker);
    void write(std::optional<QString> text);
    void sendWrite();

    MainLoop& m_loop;
    std::unique_ptr<Worker> m_worker;
    std::optional<Unsent> m_unsent;
    std::shared_ptr<const int> m_alive = std::make_shared<const int>(0);
};

} // namespace velmora
