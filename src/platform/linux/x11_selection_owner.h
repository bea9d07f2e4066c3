#pragma once

#include "platform/clipboard_contents.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_selection_transfers.h"

#include <functional>
#include <vector>

namespace velmora {

/// Owns a selection and answers whoever asks for what is on it.
///
/// A program that was slow to react asks with the time of the key that made it paste. If it is the one that a
/// former text was meant for, and that text was up at that time, it gets that text, however late it comes.
class X11SelectionOwner {
public:
    /// What is or was up.
    struct Offer {
        ClipboardContents contents;
        uint32_t client = 0; ///< whom it is for, 0 for everybody
        xcb_timestamp_t since = XCB_CURRENT_TIME;
        quint64 number = 0;
    };
    struct Question {
        uint32_t client = 0; ///< who asks
        quint64 offer = 0;   ///< its number
        bool forText = false;
    };
    using Notice = std::function<void(const Question& question)>;

    X11SelectionOwner(X11Connection& connection, X11SelectionTransfers& transfers,
                      const QByteArray& selection);
    ~X11SelectionOwner();
    X11SelectionOwner(const X11SelectionOwner&) = delete;
    X11SelectionOwner& operator=(const X11SelectionOwner&) = delete;

    /// Becomes the owner, anew each time, so that everybody learns that there is something else. Returns the
    /// offer's number, 0 when the server refused.
    quint64 offer(const ClipboardContents& contents, uint32_t client = 0);
    /// Leaves the selection without an owner, whoever it was.
    void clear();

    [[nodiscard]] bool owns() const { return !m_offers.empty(); }
    /// What is up. Only while it owns the selection.
    [[nodiscard]] const Offer& current() const { return m_offers.back(); }
    /// Whether the server takes it for the owner at this moment.
    [[nodiscard]] bool isOwnerNow() const { return m_connection.ownerOf(m_selection) == m_window; }
    [[nodiscard]] xcb_window_t window() const { return m_window; }
    [[nodiscard]] xcb_atom_t selection() const { return m_selection; }

    /// The targets of what is up, for a clipboard manager to save.
    [[nodiscard]] std::vector<uint32_t> formTargets();

    /// A reader has been answered.
    void onAnswered(Notice notice) { m_answered = std::move(notice); }
    /// A reader has now taken an answer: it has deleted the property.
    void onTaken(Notice notice) { m_taken = std::move(notice); }

    void handle(const xcb_generic_event_t& event);

private:
    void answer(const xcb_selection_request_event_t& request);
    bool convert(const Offer& offer, xcb_window_t reader, xcb_atom_t target, xcb_atom_t property);
    bool convertMultiple(const Offer& offer, xcb_window_t reader, xcb_atom_t property);
    [[nodiscard]] bool isText(xcb_atom_t target);
    [[nodiscard]] std::vector<uint32_t> formTargetsOf(const ClipboardContents& contents);
    const Offer& offerFor(const xcb_selection_request_event_t& request) const;

    X11Connection& m_connection;
    X11SelectionTransfers& m_transfers;
    xcb_window_t m_window;
    xcb_atom_t m_selection;
    std::vector<Offer> m_offers; // oldest first; the last one is up
    quint64 m_lastNumber = 0;
    Notice m_answered;
    Notice m_taken;
};

} // namespace velmora
