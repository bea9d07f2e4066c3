#include "platform/linux/x11_keyboard_grab.h"

#include "platform/linux/xcb_xkb.h"

namespace velmora {
namespace {

constexpr xcb_window_t lastSpecialFocus = 3; // none, the root under the pointer, the session's focus
constexpr uint8_t allModifiers = 0xff;

} // namespace

std::unique_ptr<X11KeyboardGrab> X11KeyboardGrab::take(const QByteArray& display) {
    auto taken = std::unique_ptr<X11KeyboardGrab>(new X11KeyboardGrab(display));
    if (!setUpInputExtension(taken->m_connection))
        return nullptr;
    for (const xcb_input_device_id_t keyboard : x11SessionKeyboards(taken->m_connection)) {
        if (!taken->grab(keyboard))
            return nullptr;
    }
    taken->m_locksBefore = taken->locks();
    return taken;
}

X11KeyboardGrab::X11KeyboardGrab(const QByteArray& display)
    : m_connection(display) {}

X11KeyboardGrab::~X11KeyboardGrab() {
    if (m_locksBefore && locks() != m_locksBefore) {
        xcb_xkb_latch_lock_state(m_connection.get(), XCB_XKB_ID_USE_CORE_KBD, allModifiers,
                                 m_locksBefore->modifiers, true, m_locksBefore->layout, 0, false, 0);
    }
    for (const xcb_input_device_id_t keyboard : m_grabbed)
        xcb_input_xi_ungrab_device(m_connection.get(), XCB_CURRENT_TIME, keyboard);
    m_connection.sync(); // the keyboard can be taken again
}

// On the window that has the focus: it is told of a loss of it and of the return in one breath. No events are
// asked for: the keys go nowhere.
bool X11KeyboardGrab::grab(xcb_input_device_id_t keyboard) {
    xcb_connection_t* x = m_connection.get();
    const XcbReply<xcb_input_xi_get_focus_reply_t> focus(
        xcb_input_xi_get_focus_reply(x, xcb_input_xi_get_focus(x, keyboard), nullptr));
    const bool hasFocus = focus && focus->focus > lastSpecialFocus;
    constexpr uint32_t noEvents = 0;
    const auto asked = xcb_input_xi_grab_device(
        x, hasFocus ? focus->focus : m_connection.root(), XCB_CURRENT_TIME, XCB_CURSOR_NONE, keyboard,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, false, 1, &noEvents);
    const XcbReply<xcb_input_xi_grab_device_reply_t> reply(xcb_input_xi_grab_device_reply(x, asked, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS)
        return false;
    m_grabbed.push_back(keyboard);
    return true;
}

bool X11KeyboardGrab::isHeld() {
    m_connection.sync();
    return m_connection.isOpen();
}

X11Keys X11KeyboardGrab::pressed() {
    const XcbReply<xcb_query_keymap_reply_t> session(
        xcb_query_keymap_reply(m_connection.get(), xcb_query_keymap(m_connection.get()), nullptr));
    return session ? keysFromBytes(session->keys) : X11Keys();
}

std::optional<X11KeyboardGrab::Locks> X11KeyboardGrab::locks() {
    xcb_connection_t* x = m_connection.get();
    if (!m_connection.isOpen() || !m_connection.hasExtension(&xcb_xkb_id))
        return std::nullopt;
    const XcbReply<xcb_xkb_use_extension_reply_t> version(
        xcb_xkb_use_extension_reply(x, xcb_xkb_use_extension(x, 1, 0), nullptr));
    const XcbReply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(x, xcb_xkb_get_state(x, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? std::optional(Locks{state->lockedMods, state->lockedGroup}) : std::nullopt;
}

} // namespace velmora
