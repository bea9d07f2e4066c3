#pragma once

#include "platform/linux/x11_connection.h"

#include <QString>

#include <optional>

namespace velmora {

/// WM_CLASS, by which a window says what program it belongs to.
struct X11WindowClass {
    xcb_window_t window = XCB_WINDOW_NONE; ///< the one that carries it
    QString instance;
    QString name;
};

/// Of the window, or of the nearest one around it that has a class.
[[nodiscard]] std::optional<X11WindowClass> findWindowClass(X11Connection& connection, xcb_window_t window);

} // namespace velmora
