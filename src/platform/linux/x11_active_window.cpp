#include "platform/linux/x11_active_window.h"

namespace velmora {

xcb_window_t x11ActiveWindow(X11Connection& x) {
    if (!x.isOpen())
        return XCB_WINDOW_NONE;
    if (x.property32(x.root(), x.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW) != XCB_WINDOW_NONE)
        return x.property32(x.root(), x.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(x.get(), xcb_get_input_focus(x.get()), nullptr));
    return focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace velmora
