#pragma once

#include "platform/linux/x11_connection.h"

namespace velmora {

/// The window that the user works in: the window manager's word, or that of the server where there is none.
[[nodiscard]] xcb_window_t x11ActiveWindow(X11Connection& x);

} // namespace velmora
