#pragma once

#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_selection_transfers.h"

#include <functional>
#include <vector>

namespace velmora {

/// Owns a selection with a text and answers whoever asks for it.
///
/// A program that was slow to react asks with the time of the key that made it paste. If it is the one that a
/// former text was meant for, and that text was up at that time, it gets that text, however late it comes.
class X11SelectionOwner {
public:
    /// A text that is or was up.
    struct Offer {
        QByteArray text;
        bool secret = false; ///< asks clipboard managers not to keep it
        uint32_t client = 0; ///< whom it is for, 0 for everybody
        xcb_timestamp_t since = XCB_CURRENT_TIME;
        quint64 serial = 0;
    };
    /// Who, and which offer.
    using Notice = std::function<void(uint32_t client, quint64 serial)>;

    X11SelectionOwner(X11Connection& connection, X11SelectionTransfers& transfers,
                      const QByteArray& selection);
    ~X11SelectionOwner();
    X11SelectionOwner(const X11SelectionOwner&) = delete;
    X11SelectionOwner& operator=(const X11SelectionOwner&) = delete;

    /// Becomes the owner, anew each time, so that everybody learns that there is another text. Returns the
    /// offer's serial number, 0 when the server refused.
    quint64 offer(const QByteArray& text, bool secret, uint32_t client = 0);
    /// Leaves the selection without an owner, whoever it was.
    void clear();

    [[nodiscard]] bool owns() const { return !m_offers.empty(); }
    /// What is up. Only while it owns the selection.
    [[nodiscard]] const Offer& current() const { return m_offers.back(); }
    /// The window of another program that owns the selection at this moment, or none.
    [[nodiscard]] xcb_window_t foreignOwner() const;
    [[nodiscard]] xcb_window_t window() const { return m_window; }
    [[nodiscard]] xcb_atom_t selection() const { return m_selection; }

    /// A reader has asked for anything.
    void onAsked(Notice notice) { m_asked = std::move(notice); }
    /// A reader gets the text, or has now taken it.
    void onRequested(Notice notice) { m_requested = std::move(notice); }
    void onTaken(Notice notice) { m_taken = std::move(notice); }

    void handle(const xcb_generic_event_t& event);

private:
    void answer(const xcb_selection_request_event_t& request);
    bool convert(const Offer& offer, xcb_window_t reader, xcb_atom_t target, xcb_atom_t property);
    bool convertMultiple(const Offer& offer, xcb_window_t reader, xcb_atom_t property);
    void sendText(const Offer& offer, xcb_window_t reader, xcb_atom_t property, xcb_atom_t type,
                  const QByteArray& bytes);
    const Offer& offerFor(const xcb_selection_request_event_t& request) const;
    void setProperty(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type,
                     const std::vector<uint32_t>& values);

    X11Connection& m_connection;
    X11SelectionTransfers& m_transfers;
    xcb_window_t m_window;
    xcb_atom_t m_selection;
    std::vector<Offer> m_offers; // oldest first; the last one is up
    quint64 m_lastSerial = 0;
    Notice m_asked;
    Notice m_requested;
    Notice m_taken;
};

} // namespace velmora
