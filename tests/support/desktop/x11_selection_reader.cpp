#include "support/desktop/x11_selection_reader.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 300ms;                   // without any progress of the owner
constexpr auto totalPatience = 2s;                 // somebody waits for the answer, and does nothing else
constexpr qsizetype mostBytes = 256 * 1024 * 1024; // an owner that never ends is not a text
constexpr const char* transferProperty = "VELMORA_TRANSFER";
constexpr uint32_t wholeInWords = 0x1fffffff;

} // namespace

X11SelectionReader::X11SelectionReader(const QByteArray& display)
    : m_connection(display) {}

std::optional<QString> X11SelectionReader::read(const QByteArray& selectionName) {
    if (!m_connection.isOpen())
        return std::nullopt;
    const xcb_atom_t selection = m_connection.atom(selectionName);
    if (m_connection.ownerOf(selection) == XCB_WINDOW_NONE)
        return std::nullopt;
    m_deadline = std::chrono::steady_clock::now() + totalPatience;

    // A window for each read: what an owner answers too late goes nowhere.
    const xcb_window_t window = m_connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    QString text;
    Outcome outcome = Outcome::Refused;
    for (const char* target : {"UTF8_STRING", "text/plain;charset=utf-8", "STRING"}) {
        outcome = convert(window, selection, m_connection.atom(target), text);
        if (outcome != Outcome::Refused)
            break;
    }
    xcb_destroy_window(m_connection.get(), window);
    m_connection.flush();
    if (outcome != Outcome::Text)
        return std::nullopt;
    return text;
}

X11SelectionReader::Outcome X11SelectionReader::convert(xcb_window_t window, xcb_atom_t selection,
                                                        xcb_atom_t target, QString& text) {
    xcb_convert_selection(m_connection.get(), window, selection, target, m_connection.atom(transferProperty),
                          m_connection.serverTime(window));
    const XcbEvent answer = waitFor([&](const xcb_generic_event_t& event) {
        const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        return typeOf(event) == XCB_SELECTION_NOTIFY && notify.requestor == window && notify.target == target;
    });
    if (!answer)
        return Outcome::Silent;
    if (reinterpret_cast<const xcb_selection_notify_event_t&>(*answer).property == XCB_ATOM_NONE)
        return Outcome::Refused;

    QByteArray bytes;
    xcb_atom_t type = XCB_ATOM_NONE;
    if (!takeProperty(window, bytes, type))
        return Outcome::Refused;
    if (type == m_connection.atom("INCR")) {
        const Outcome outcome = receiveIncrements(window, bytes);
        if (outcome != Outcome::Text)
            return outcome;
        type = target;
    }
    if (type != target && type != XCB_ATOM_STRING && type != m_connection.atom("UTF8_STRING"))
        return Outcome::Refused;
    while (bytes.endsWith('\0')) // some owners count the end of their C string
        bytes.chop(1);
    text = type == XCB_ATOM_STRING ? QString::fromLatin1(bytes) : QString::fromUtf8(bytes);
    return Outcome::Text;
}

X11SelectionReader::Outcome X11SelectionReader::receiveIncrements(xcb_window_t window, QByteArray& bytes) {
    const xcb_atom_t name = m_connection.atom(transferProperty);
    bytes.clear();
    for (;;) {
        const XcbEvent chunk = waitFor([&](const xcb_generic_event_t& event) {
            const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            return typeOf(event) == XCB_PROPERTY_NOTIFY && notify.window == window && notify.atom == name &&
                   notify.state == XCB_PROPERTY_NEW_VALUE;
        });
        QByteArray part;
        xcb_atom_t type = XCB_ATOM_NONE;
        if (!chunk || !takeProperty(window, part, type) || bytes.size() + part.size() > mostBytes)
            return Outcome::Silent;
        if (type == XCB_ATOM_NONE)
            continue; // the notice of a value that was taken already
        if (part.isEmpty())
            return Outcome::Text;
        bytes += part;
    }
}

// Reading deletes, which asks an incremental owner for more.
bool X11SelectionReader::takeProperty(xcb_window_t window, QByteArray& bytes, xcb_atom_t& type) {
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_connection.get(),
        xcb_get_property(m_connection.get(), true, window, m_connection.atom(transferProperty), XCB_ATOM_ANY,
                         0, wholeInWords),
        nullptr));
    if (!reply)
        return false;
    type = reply->type;
    bytes = QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       xcb_get_property_value_length(reply.get()));
    return true;
}

template<typename Match>
XcbEvent X11SelectionReader::waitFor(Match matches) {
    const auto deadline = std::min(m_deadline, std::chrono::steady_clock::now() + patience);
    for (;;) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        XcbEvent event = m_connection.waitForEvent(std::max(left, 0ms));
        if (!event || matches(*event))
            return event;
    }
}

} // namespace velmora::test
