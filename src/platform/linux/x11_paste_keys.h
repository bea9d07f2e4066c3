#pragma once

#include "platform/linux/x11_connection.h"

#include <optional>

namespace velmora {

/// The keys of a paste chord in the keyboard's present layout.
struct X11PasteKeys {
    xcb_keycode_t modifier = 0;
    xcb_keycode_t key = 0;
};

/// Ctrl+V, or Shift+Insert when asked for or when no layout of the keyboard has a v; none when the keyboard
/// can't make either.
[[nodiscard]] std::optional<X11PasteKeys> findPasteKeys(X11Connection& connection, bool shiftInsert);

} // namespace velmora
