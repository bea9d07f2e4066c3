#pragma once

#include "foundation/main_loop.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_key_poster.h"
#include "platform/linux/x11_selection_owner.h"
#include "platform/linux/x11_selection_reader.h"
#include "platform/linux/x11_selection_transfers.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <optional>
#include <variant>

namespace velmora {

/// The line of writes and pastes, worked off one after the other: a pasted text stays up until its target has
/// taken it, or about a second (three, for a program that has taken one before) has passed without a sign of
/// the target; whatever comes later waits.
///
/// What the user copies in another program meanwhile is not lost: a write that puts back what string() told
/// (each answer counts once) gives way to what was copied since.
///
/// Lives on the thread of its loop, which must be Qt's.
class X11PasteEngine {
public:
    X11PasteEngine(MainLoop& loop, const QByteArray& display, const QStringList& moreTerminals);
    /// Hands the text over to the desktop's clipboard manager, if there is one.
    ~X11PasteEngine();

    /// Whether the server has what is needed.
    [[nodiscard]] static bool canWorkWith(const X11Connection& connection);
    [[nodiscard]] bool isUsable() const { return canWorkWith(m_connection); }

    /// What the clipboard will hold when the line is worked off. Asks the owner, and waits for its answer,
    /// when that is another program; `ownWidgets` is its answer when that is a text field of this process.
    [[nodiscard]] std::optional<QString> string(const std::optional<QString>& ownWidgets = {});
    /// Puts a text up for the user to keep, or clears the clipboard.
    void write(const std::optional<QString>& text);
    /// Pastes a text into the window that has the focus at its turn; without a text, what is on the
    /// clipboard.
    void paste(const std::optional<QString>& text);

private:
    struct Write {
        std::optional<QString> text;
    };
    struct Paste {
        std::optional<QString> text;
    };
    using Step = std::variant<Write, Paste>;

    // The paste whose text is up.
    struct Running {
        QByteArray text;
        bool secret = false;
        X11KeyPoster::Target target;
        int requests = 0; // of the target, for the text
        int taken = 0;    // of its requests, those whose answer it has fetched
        MainLoop::TimePoint since = {};
        MainLoop::TimePoint lastAsked = {};   // for anything, by the target
        MainLoop::Duration longestPause = {}; // between two of its questions
        bool reclaimed = false;
        bool overdue = false; // not read so far, and up only because no other paste waits
        Timer end = {};
    };
    // How a program reads in one paste.
    struct Habit {
        int reads = 0;                 // some do it twice, and only the last one counts
        int misses = 0;                // pastes with fewer reads since
        MainLoop::Duration pause = {}; // between its questions, lately
    };
    // What string() told, and what the user copied since, if anything.
    struct Answer {
        std::optional<QString> text;
        std::optional<std::optional<QString>> newer;
    };

    void dispatch();
    void advance();
    void perform(const Write& write);
    void perform(const Paste& paste);
    void putUp(const QByteArray& text, bool secret, const X11KeyPoster::Target& target);
    void givePrimaryBack();
    [[nodiscard]] bool isOfRunning(const X11SelectionOwner& owner, uint32_t client, quint64 serial) const;
    void asked();
    void settle();
    void finishAfter(MainLoop::Duration time);
    void expire();
    void learn();
    [[nodiscard]] bool isPasteWaiting() const;
    void ownerChanged(xcb_window_t owner);
    void lookAtForeignCopy();
    void noteForeignCopy(const std::optional<QString>& text);
    void handOver();

    MainLoop& m_loop;
    X11Connection m_connection;
    X11SelectionReader m_reader;
    X11SelectionTransfers m_transfers;
    X11SelectionOwner m_clipboard;
    X11SelectionOwner m_primary;
    X11KeyPoster m_poster;

    std::deque<Step> m_line;
    std::optional<Running> m_running;
    std::deque<Answer> m_answers;
    QByteArray m_lastPiece;
    bool m_foreignCopy = false; // another program took the clipboard, and nobody has looked at it yet
    bool m_primaryBorrowed = false;
    std::optional<QString> m_primaryOfUser; // from before it was borrowed
    QHash<uint32_t, Habit> m_habits;        // by client
    int m_fixesEvent = 0;
};

} // namespace velmora
