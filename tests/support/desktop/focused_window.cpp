#include "support/desktop/focused_window.h"

#include "support/desktop/wait_until.h"

namespace velmora::test {

FocusedWindow::FocusedWindow(Kind kind)
    : m_kind(kind)
    , m_window(xcb_generate_id(m_x.get())) {
    const uint32_t mask = XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(m_x.get(), XCB_COPY_FROM_PARENT, m_window, m_x.root(), 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    xcb_map_window(m_x.get(), m_window);
    m_x.listen([this] {
        while (const XcbEvent event = m_x.nextEvent())
            handle(*event);
    });
}

FocusedWindow::~FocusedWindow() {
    close();
    m_x.sync();
}

bool FocusedWindow::takeFocus() {
    return waitUntil([this] {
        const XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            m_x.get(), xcb_get_window_attributes(m_x.get(), m_window), nullptr));
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
            return false;
        const XcbReply<xcb_get_input_focus_reply_t> focus(
            xcb_get_input_focus_reply(m_x.get(), xcb_get_input_focus(m_x.get()), nullptr));
        if (focus && focus->focus == m_window)
            return true;
        xcb_set_input_focus(m_x.get(), XCB_INPUT_FOCUS_POINTER_ROOT, m_window, XCB_CURRENT_TIME);
        return false;
    });
}

void FocusedWindow::close() {
    if (m_window != XCB_WINDOW_NONE)
        xcb_destroy_window(m_x.get(), std::exchange(m_window, XCB_WINDOW_NONE));
}

void FocusedWindow::handle(const xcb_generic_event_t& event) {
    const xcb_atom_t answer = m_x.atom("ANSWER");
    if (typeOf(event) == XCB_KEY_PRESS) {
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
        if ((key.state & XCB_MOD_MASK_CONTROL) == 0)
            return;
        ++m_chords;
        if (m_kind == Kind::Pasting)
            xcb_convert_selection(m_x.get(), m_window, m_x.atom("CLIPBOARD"), m_x.atom("UTF8_STRING"), answer,
                                  key.time);
    } else if (typeOf(event) == XCB_SELECTION_NOTIFY) {
        m_text += m_x.property(m_window, answer);
        xcb_delete_property(m_x.get(), m_window, answer);
    }
}

} // namespace velmora::test
