#include "platform/linux/x11_selection_transfers.h"

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr qsizetype largestChunk = 256 * 1024;
constexpr auto stalled = 5s;

} // namespace

X11SelectionTransfers::X11SelectionTransfers(X11Connection& connection, MainLoop& loop)
    : m_connection(connection)
    , m_loop(loop)
    // A quarter of the largest request leaves room for its header on any server.
    , m_chunk(std::min<qsizetype>(largestChunk, xcb_get_maximum_request_length(connection.get()))) {}

void X11SelectionTransfers::send(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type,
                                 const QByteArray& bytes, Finished finished) {
    Transfer& transfer = begin(reader, property, type, std::move(finished));
    if (bytes.size() > m_chunk) {
        transfer.bytes = bytes;
        const auto size = static_cast<uint32_t>(bytes.size());
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, reader, property,
                            m_connection.atom("INCR"), 32, 1, &size);
    } else {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, reader, property, type, 8,
                            static_cast<uint32_t>(bytes.size()), bytes.constData());
        transfer.ended = true;
    }
}

void X11SelectionTransfers::send(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type,
                                 const std::vector<uint32_t>& values, Finished finished) {
    begin(reader, property, type, std::move(finished)).ended = true;
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, reader, property, type, 32,
                        static_cast<uint32_t>(values.size()), values.data());
}

X11SelectionTransfers::Transfer& X11SelectionTransfers::begin(xcb_window_t reader, xcb_atom_t property,
                                                              xcb_atom_t type, Finished finished) {
    forget(reader, property);
    // Before the property changes, or its deletion could be missed.
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), reader, XCB_CW_EVENT_MASK, &mask);
    m_running.push_back(std::make_unique<Transfer>());
    Transfer& transfer = *m_running.back();
    transfer.reader = reader;
    transfer.property = property;
    transfer.type = type;
    transfer.finished = std::move(finished);
    watch(transfer);
    return transfer;
}

void X11SelectionTransfers::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) == XCB_DESTROY_NOTIFY) {
        forget(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window, std::nullopt);
    } else if (typeOf(event) == XCB_PROPERTY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.state == XCB_PROPERTY_DELETE)
            propertyDeleted(notify.window, notify.atom);
    }
}

void X11SelectionTransfers::propertyDeleted(xcb_window_t reader, xcb_atom_t property) {
    const auto found = std::ranges::find_if(m_running, [&](const auto& transfer) {
        return transfer->reader == reader && transfer->property == property;
    });
    if (found == m_running.end())
        return;
    if (!(*found)->ended) {
        sendNext(**found);
        return;
    }
    const Finished finished = std::move((*found)->finished);
    forget(reader, property);
    if (finished)
        finished();
}

void X11SelectionTransfers::sendNext(Transfer& transfer) {
    const qsizetype size = std::min(m_chunk, transfer.bytes.size() - transfer.sent);
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, transfer.reader, transfer.property,
                        transfer.type, 8, static_cast<uint32_t>(size),
                        transfer.bytes.constData() + transfer.sent);
    transfer.sent += size;
    transfer.ended = size == 0;
    watch(transfer);
}

void X11SelectionTransfers::watch(Transfer& transfer) {
    transfer.expiry = m_loop.after(stalled, [this, reader = transfer.reader, property = transfer.property] {
        forget(reader, property);
    });
}

// Without a property, all of the reader's.
void X11SelectionTransfers::forget(xcb_window_t reader, std::optional<xcb_atom_t> property) {
    const auto forgotten = std::erase_if(m_running, [&](const auto& transfer) {
        return transfer->reader == reader && (!property || transfer->property == *property);
    });
    const auto ofReader = [&](const auto& transfer) { return transfer->reader == reader; };
    if (forgotten == 0 || std::ranges::any_of(m_running, ofReader))
        return;
    const uint32_t nothing = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(m_connection.get(), reader, XCB_CW_EVENT_MASK, &nothing);
}

} // namespace velmora
