#include "platform/linux/x11_connection.h"

#include <QAbstractEventDispatcher>
#include <QPointer>
#include <QSocketNotifier>

#include <poll.h>

#include <cerrno>
#include <cstring>

namespace velmora {

X11Connection::X11Connection(const QByteArray& display) {
    int number = 0;
    m_connection = xcb_connect(display.isEmpty() ? nullptr : display.constData(), &number);
    if (xcb_connection_has_error(m_connection))
        return;
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (; screen.rem > 1 && number > 0; --number)
        xcb_screen_next(&screen);
    m_screen = screen.data;
}

X11Connection::~X11Connection() {
    m_notifier.reset(); // before its descriptor
    xcb_disconnect(m_connection);
}

bool X11Connection::hasExtension(xcb_extension_t* extension) const {
    const xcb_query_extension_reply_t* reply = xcb_get_extension_data(m_connection, extension);
    return reply && reply->present;
}

xcb_atom_t X11Connection::atom(const QByteArray& name) {
    if (const auto known = m_atoms.constFind(name); known != m_atoms.constEnd())
        return *known;
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, false, static_cast<uint16_t>(name.size()), name.constData()), nullptr));
    if (!reply)
        return XCB_ATOM_NONE;
    m_atoms.insert(name, reply->atom);
    return reply->atom;
}

QByteArray X11Connection::atomName(xcb_atom_t atom) {
    const XcbReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    return reply ? QByteArray(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QByteArray();
}

xcb_window_t X11Connection::createWindow(uint32_t eventMask) {
    if (!isOpen())
        return XCB_WINDOW_NONE;
    const xcb_window_t window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &eventMask);
    return window;
}

uint32_t X11Connection::clientOf(xcb_window_t window) const {
    return window & ~xcb_get_setup(m_connection)->resource_id_mask;
}

QByteArray X11Connection::property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) {
    constexpr uint32_t wholeInWords = 0x1fffffff;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, false, window, name, type, 0, wholeInWords), nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

uint32_t X11Connection::property32(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) {
    const QByteArray value = property(window, name, type);
    uint32_t first = 0;
    if (value.size() >= qsizetype(sizeof first))
        std::memcpy(&first, value.constData(), sizeof first);
    return first;
}

xcb_window_t X11Connection::ownerOf(xcb_atom_t selection) const {
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_timestamp_t X11Connection::serverTime(xcb_window_t ownWindow) {
    const xcb_atom_t name = atom("VELMORA_TIME");
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, ownWindow, name, XCB_ATOM_INTEGER, 32, 0,
                        nullptr);
    xcb_flush(m_connection);
    while (XcbEvent event{xcb_wait_for_event(m_connection)}) {
        const auto* notify = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
        if (typeOf(*event) == XCB_PROPERTY_NOTIFY && notify->window == ownWindow && notify->atom == name)
            return notify->time;
        m_backlog.push_back(std::move(event));
    }
    return XCB_CURRENT_TIME;
}

// The descriptor tells of what the server has sent, but not of what the library has read already: beside a
// reply, and with everything it sends. So that is looked for before the loop sleeps, whoever it was that
// read.
void X11Connection::listen(std::function<void()> arrived) {
    m_arrived = std::move(arrived);
    m_notifier = std::make_unique<QSocketNotifier>(fileDescriptor(), QSocketNotifier::Read);
    QSocketNotifier* context = m_notifier.get();
    QObject::connect(context, &QSocketNotifier::activated, context, [this] { tell(); });
    for (const auto turn : {&QAbstractEventDispatcher::aboutToBlock, &QAbstractEventDispatcher::awake})
        QObject::connect(QAbstractEventDispatcher::instance(), turn, context, [this] { attend(); });
}

// The events themselves wait for their turn in the loop: what they set off may be deleted later, and that
// works in a turn alone.
void X11Connection::attend() {
    flush();
    if (hasWaitingEvents() && !std::exchange(m_willTell, true))
        QMetaObject::invokeMethod(
            m_notifier.get(), [this] { tell(); }, Qt::QueuedConnection);
}

void X11Connection::tell() {
    m_willTell = false;
    const QPointer<QSocketNotifier> alive = m_notifier.get();
    const auto arrived = m_arrived;
    arrived();
    if (alive && !isOpen())
        m_notifier->setEnabled(false); // it would stay readable for ever
}

XcbEvent X11Connection::nextEvent() {
    if (m_backlog.empty())
        return XcbEvent(xcb_poll_for_event(m_connection));
    XcbEvent event = std::move(m_backlog.front());
    m_backlog.pop_front();
    return event;
}

void X11Connection::discardEvents() {
    while (nextEvent()) {
    }
}

bool X11Connection::hasWaitingEvents() {
    if (XcbEvent event{xcb_poll_for_queued_event(m_connection)})
        m_backlog.push_back(std::move(event));
    return !m_backlog.empty();
}

XcbEvent X11Connection::waitForEvent(std::chrono::milliseconds timeout) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + timeout;
    flush();
    while (isOpen()) {
        if (XcbEvent event = nextEvent())
            return event;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0)
            break;
        pollfd readable{fileDescriptor(), POLLIN, 0};
        if (poll(&readable, 1, static_cast<int>(left.count())) < 0 && errno != EINTR)
            break;
    }
    return nullptr;
}

bool containsAtom(const QByteArray& atoms, xcb_atom_t wanted) {
    for (qsizetype at = 0; at + qsizetype(sizeof wanted) <= atoms.size(); at += sizeof wanted) {
        if (std::memcmp(atoms.constData() + at, &wanted, sizeof wanted) == 0)
            return true;
    }
    return false;
}

void X11Connection::sync() {
    XcbReply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

} // namespace velmora
