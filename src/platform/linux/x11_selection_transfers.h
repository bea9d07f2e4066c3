#pragma once

#include "foundation/main_loop.h"
#include "platform/linux/x11_connection.h"

#include <functional>
#include <memory>
#include <vector>

namespace velmora {

/// Puts what a selection's reader asked for into the reader's property, in increments when it is big, and
/// tells when it was taken. Any number of readers at once; one that dies or stalls is forgotten.
class X11SelectionTransfers {
public:
    using Finished = std::function<void()>;

    X11SelectionTransfers(X11Connection& connection, MainLoop& loop);

    /// Writes the property (and nothing else: the notice to the reader is the caller's). `finished` is called
    /// when the reader has deleted it, the last one of an incremental transfer included; never when it fails.
    void send(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type, const QByteArray& bytes,
              Finished finished);
    /// The same for a value of 32-bit numbers, which fits into one request.
    void send(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type, const std::vector<uint32_t>& values,
              Finished finished);
    void handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool isIdle() const { return m_running.empty(); }

private:
    struct Transfer {
        xcb_window_t reader = XCB_WINDOW_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_atom_t type = XCB_ATOM_NONE;
        QByteArray bytes;
        qsizetype sent = 0;
        bool ended = false; // all bytes and, if incremental, the empty end mark are written
        Finished finished;
        Timer expiry;
    };

    Transfer& begin(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type, Finished finished);
    void propertyDeleted(xcb_window_t reader, xcb_atom_t property);
    void sendNext(Transfer& transfer);
    void watch(Transfer& transfer);
    void forget(xcb_window_t reader, std::optional<xcb_atom_t> property);

    X11Connection& m_connection;
    MainLoop& m_loop;
    qsizetype m_chunk;
    std::vector<std::unique_ptr<Transfer>> m_running;
};

} // namespace velmora
