#pragma once

#include <QByteArray>
#include <QHash>

#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QSocketNotifier;

namespace velmora {

struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};
/// What libxcb allocates with malloc: replies and events.
template<typename T>
using XcbReply = std::unique_ptr<T, XcbFree>;
using XcbEvent = XcbReply<xcb_generic_event_t>;

/// A connection of its own to the X server. Belongs to the thread that uses it. With a server that is gone
/// every call is harmless and answers nothing. Errors of requests arrive as events with response type 0.
class X11Connection {
public:
    /// An empty name is the session's display ($DISPLAY).
    explicit X11Connection(const QByteArray& display = {});
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] bool isOpen() const { return m_screen && !xcb_connection_has_error(m_connection); }
    [[nodiscard]] xcb_connection_t* get() const { return m_connection; }
    [[nodiscard]] xcb_window_t root() const {
        return m_screen ? m_screen->root : xcb_window_t{XCB_WINDOW_NONE};
    }
    [[nodiscard]] bool hasExtension(xcb_extension_t* extension) const;

    /// The atom of the name, made when there is none yet.
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name);
    [[nodiscard]] QByteArray atomName(xcb_atom_t atom);

    /// An unmapped window, for selections and properties.
    [[nodiscard]] xcb_window_t createWindow(uint32_t eventMask);
    /// Which client made the window, told from all others by the upper bits of its IDs.
    [[nodiscard]] uint32_t clientOf(xcb_window_t window) const;
    /// A property's whole value, of any type unless one is given; empty when there is none.
    [[nodiscard]] QByteArray property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type = XCB_ATOM_ANY);
    /// The first of the property's 32-bit values, 0 when there is none.
    [[nodiscard]] uint32_t property32(xcb_window_t window, xcb_atom_t name, xcb_atom_t type);
    /// The window that owns the selection, or none.
    [[nodiscard]] xcb_window_t ownerOf(xcb_atom_t selection) const;
    /// The server's time now; events that come in meanwhile wait for nextEvent().
    [[nodiscard]] xcb_timestamp_t serverTime(xcb_window_t ownWindow);

    /// Has the thread's event loop work for the connection from now on: what was written goes out, and
    /// `arrived` is called when there is something for nextEvent() to take, wherever it was read, and when
    /// the server has hung up. `arrived` is never called from within a call of this class, and may destroy
    /// the connection.
    void listen(std::function<void()> arrived);

    /// The next event that has arrived, or null. Never waits.
    [[nodiscard]] XcbEvent nextEvent();
    /// Drops what has arrived; for connections that only ask, to which the server still tells of keyboard
    /// mappings.
    void discardEvents();
    /// Whether nextEvent() has one without asking the server: one that was read beside a reply, or while
    /// something was sent.
    [[nodiscard]] bool hasWaitingEvents();
    /// The next event, or null when none comes in that time.
    [[nodiscard]] XcbEvent waitForEvent(std::chrono::milliseconds timeout);
    /// Sends what was written; a connection that listens does so by itself.
    void flush() { xcb_flush(m_connection); }
    /// Waits until the server has done what was asked of it so far: other clients see it done.
    void sync();

private:
    [[nodiscard]] int fileDescriptor() const { return xcb_get_file_descriptor(m_connection); }
    void attend();
    void tell();

    xcb_connection_t* m_connection;
    xcb_screen_t* m_screen = nullptr;
    QHash<QByteArray, xcb_atom_t> m_atoms;
    std::deque<XcbEvent> m_backlog;
    std::function<void()> m_arrived;
    std::unique_ptr<QSocketNotifier> m_notifier; // while it listens
    bool m_willTell = false;
};

/// Whether the value of a property that is a list of atoms has this one.
[[nodiscard]] bool containsAtom(const QByteArray& atoms, xcb_atom_t wanted);

/// The kind of event, without the bit that marks those sent by other clients.
[[nodiscard]] inline int typeOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7f;
}

} // namespace velmora
