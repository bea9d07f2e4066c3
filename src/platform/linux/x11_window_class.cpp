#include "platform/linux/x11_window_class.h"

namespace velmora {

std::optional<X11WindowClass> findWindowClass(X11Connection& connection, xcb_window_t window) {
    while (window > XCB_INPUT_FOCUS_POINTER_ROOT && window != connection.root()) {
        const QByteArray value = connection.property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
        if (!value.isEmpty()) {
            const QList<QByteArray> parts = value.split('\0');
            return X11WindowClass{window, QString::fromUtf8(parts[0]), QString::fromUtf8(parts.value(1))};
        }
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
        window = tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
    }
    return std::nullopt;
}

} // namespace velmora
