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
/// The work is done on a thread of its own, so that no other program holds up the main thread, and a window
/// of this process can be pasted into although its toolkit blocks the main thread while it reads.
class X11PasteQueue final : public Pasteboard, public KeyPoster {
public:
    struct Options {
        QByteArray display = {};        ///< empty for the session's own
        QStringList moreTerminals = {}; ///< WM_CLASS names of programs to treat as terminals
        /// Path of the program that keeps the user's clipboard when this process is gone and the desktop has
        /// no clipboard manager; empty for none.
        QString keeper = {};
    };

    /// Null when there is no X server, or one without XTEST and XFIXES.
    [[nodiscard]] static std::unique_ptr<X11PasteQueue> open(MainLoop& loop, const Options& options);
    /// Waits for the pieces in line, which takes a second at most for a window that doesn't read, and then
    /// leaves the user's clipboard as it was.
    ~X11PasteQueue() override;
    X11PasteQueue(const X11PasteQueue&) = delete;
    X11PasteQueue& operator=(const X11PasteQueue&) = delete;

    [[nodiscard]] Saved save() override;
    void putBack(Saved saved) override;
    void clearContents() override;
    void setString(const QString& text) override;
    void beginText() override;
    void postPasteChord() override;
    void onUndelivered(std::function<void(const QString& text)> call) override;

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
    std::optional<Unsent> m_unsent;
    quint64 m_lastSaved = 0;
    std::function<void(const QString&)> m_undelivered = [](const QString&) {};
    std::shared_ptr<const int> m_alive = std::make_shared<const int>(0);
    std::unique_ptr<Worker> m_worker;
};

} // namespace velmora
