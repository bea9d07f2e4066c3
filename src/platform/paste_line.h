#pragma once

#include "foundation/main_loop.h"
#include "platform/paste_system.h"
#include "platform/pasteboard.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <deque>
#include <map>
#include <variant>

namespace velmora {

/// The line of what is to be done with the clipboard, worked off one after the other: a pasted text stays up
/// until its window has read it. What comes in meanwhile for the same window is pasted in one go.
///
/// A text belongs to the window that had the focus when it was handed over. When that has lost the focus, or
/// shows no sign of reading, nothing more goes to it until the next text begins, the user's clipboard comes
/// back, and what was not delivered is reported.
///
/// What the user copies meanwhile is not lost: it takes the place of what was to be put back.
class PasteLine {
public:
    PasteLine(MainLoop& loop, PasteSystem& system);

    /// What is pasted from now on is a text of its own.
    void beginText();
    /// Pastes a piece of the text into the window that has the focus now.
    void paste(const QString& piece);
    /// Posts the chord for what is on the clipboard, whoever put it there.
    void pasteClipboard();
    /// Puts up a text that the user wants to have, or clears the clipboard.
    void write(const std::optional<QString>& text);
    void save(Pasteboard::Saved as);
    void putBack(Pasteboard::Saved saved);
    /// What couldn't be delivered, told once it is known.
    void onUndelivered(std::function<void(const QString& text)> call) { m_undelivered = std::move(call); }

    /// A program has been given the text, or something else that it asked for, and has fetched the answer;
    /// `number` is putUp()'s.
    void answered(quint64 client, quint64 number, bool forText);
    void taken(quint64 client, quint64 number);
    /// A window has answered a ping.
    void ponged(quint64 window);
    /// Another program has put something on the clipboard.
    void copiedElsewhere();

    /// Called whenever all that was in line is done.
    void onIdle(std::function<void()> call) { m_idle = std::move(call); }
    [[nodiscard]] bool isIdle() const { return !m_running && m_line.empty(); }
    /// What the user is to find on the clipboard when the program is gone, none if what is there isn't ours.
    [[nodiscard]] std::optional<ClipboardContents> whatToLeave() const;

private:
    using Contents = std::shared_ptr<const FetchedClipboard>;

    struct Paste {
        PasteTarget target;
        QString text;
    };
    struct Chord {};
    struct Write {
        ClipboardContents contents;
    };
    struct Save {
        Pasteboard::Saved as;
    };
    struct PutBack {
        Pasteboard::Saved saved;
    };
    // Of the oldest that is kept, which goes on being kept.
    struct GiveBack {};
    using Step = std::variant<Paste, Chord, Write, Save, PutBack, GiveBack>;

    // The paste whose text is up.
    struct Running {
        PasteTarget target;
        QString text;
        quint64 number = 0;
        int answers = 0;      // to the target, of any kind
        int taken = 0;        // of the answers, those that it has fetched
        bool hasRead = false; // one of them was the text
        int pongs = 0;        // since its last question
        bool isPinged = false;
        int answersBeforePing = 0;
        MainLoop::TimePoint since = {};
        MainLoop::TimePoint lastAnswer = {};
        MainLoop::Duration longestPause = {}; // between two answers
        bool reclaimed = false;
        Timer ping = {};
        Timer end = {};
    };
    // How often a window's program asks in one paste.
    struct Habit {
        int answers = 0;
        int misses = 0; // pastes with fewer questions since

        void learn(int latest);
    };
    // What is to be put back, and what the user has copied since, if anything.
    struct Kept {
        Contents contents;
        Contents newer;
    };

    void add(Step step);
    void advance();
    void perform(const Paste& paste);
    void perform(const Chord& chord);
    void perform(const Write& write);
    void perform(const Save& save);
    void perform(const PutBack& putBack);
    void perform(const GiveBack& giveBack);

    [[nodiscard]] bool mustWait();
    [[nodiscard]] bool hasForeignCopy(const Step& next);
    void noteForeignCopy(const Contents& copy);
    Contents fetch();
    void offer(const ClipboardContents& contents);
    void setOurs(const ClipboardContents& contents);
    void restore(const Kept& kept);
    [[nodiscard]] ClipboardContents whatToRestore(const Kept& kept) const;
    [[nodiscard]] bool isEcho(const Contents& contents) const;

    [[nodiscard]] QString takePortion(Paste& paste);
    void putUpRunning();
    [[nodiscard]] bool isRunning(quint64 client, quint64 number) const;
    [[nodiscard]] bool hasPings(const PasteTarget& target);
    void settle();
    void pingAfter(MainLoop::Duration time);
    void finishAfter(MainLoop::Duration time);
    void expire();
    void giveUp(const PasteTarget& target, QString text);

    MainLoop& m_loop;
    PasteSystem& m_system;
    std::function<void(const QString&)> m_undelivered = [](const QString&) {};
    std::function<void()> m_idle = [] {};

    std::deque<Step> m_line;
    std::optional<Running> m_running;
    Contents m_ours;       // what was put up last; null once another program is known to have copied since
    bool m_copied = false; // another program, and nobody has looked at it yet
    bool m_pieceIsUp = false;
    QList<QByteArray> m_recentPieces;

    std::map<Pasteboard::Saved, Kept> m_kept; // oldest first
    Contents m_awaited;                       // the line waits for it
    Timer m_fetchPatience;

    QSet<quint64> m_reading;        // windows that have read of this text
    QHash<quint64, Habit> m_habits; // by window
    QSet<quint64> m_givenUp;        // windows that get nothing more of this text
    QSet<quint64> m_taking;         // clients that show when they have fetched an answer
    QHash<quint64, bool> m_pongs;   // whether a window answers pings, once that is known
    quint64 m_heldFor = 0;          // the window that gets these line breaks with its next piece
    QString m_heldBreaks;
};

} // namespace velmora
