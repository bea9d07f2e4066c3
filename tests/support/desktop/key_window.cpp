#include "support/desktop/key_window.h"

namespace velmora::test {

KeyWindow::KeyWindow()
    : m_window(xcb_generate_id(m_x.get())) {
    using namespace std::chrono_literals;
    constexpr uint16_t size = 50;
    constexpr uint32_t events =
        XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_create_window(m_x.get(), XCB_COPY_FROM_PARENT, m_window, m_x.root(), 0, 0, size, size, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_map_window(m_x.get(), m_window);
    // A window manager that has only just started may take it for one of those it finds, which get no focus.
    for (int attempt = 0; attempt < 25; ++attempt) {
        while (const XcbEvent event = m_x.waitForEvent(200ms)) {
            if (typeOf(*event) == XCB_FOCUS_IN)
                return;
        }
        askForFocus();
    }
}

void KeyWindow::askForFocus() {
    constexpr uint32_t fromAPager = 2;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_window;
    request.type = m_x.atom("_NET_ACTIVE_WINDOW");
    request.data.data32[0] = fromAPager;
    xcb_send_event(m_x.get(), false, m_x.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&request));
}

std::vector<KeyWindow::Key> KeyWindow::takeKeys() {
    read();
    return std::exchange(m_keys, {});
}

bool KeyWindow::hasFocus() {
    read();
    return m_hasFocus;
}

int KeyWindow::focusLosses() {
    read();
    return m_focusLosses;
}

bool KeyWindow::grabKeyboard() {
    const XcbReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(m_x.get(),
                                xcb_grab_keyboard(m_x.get(), false, m_window, XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void KeyWindow::read() {
    [[maybe_unused]] const XcbReply<xcb_get_input_focus_reply_t> sync(
        xcb_get_input_focus_reply(m_x.get(), xcb_get_input_focus(m_x.get()), nullptr));
    while (const XcbEvent event = m_x.nextEvent()) {
        const int type = typeOf(*event);
        if (type == XCB_FOCUS_OUT)
            ++m_focusLosses;
        if (type == XCB_FOCUS_OUT || type == XCB_FOCUS_IN)
            m_hasFocus = type == XCB_FOCUS_IN;
        if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
            continue;
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        m_keys.push_back({type == XCB_KEY_PRESS, key.detail, static_cast<uint16_t>(key.state & 0xff)});
    }
}

} // namespace velmora::test
