#pragma once

#include "platform/fn_stand_in.h"

#include <xcb/xproto.h>

#include <optional>
#include <vector>

/// Between the server's key codes (evdev's plus 8) and the program's virtual ones. Both name a key by its
/// place on the keyboard, whatever the layout makes of it.
namespace velmora::X11KeyCodes {

inline constexpr int fn = 63; ///< no key of the server's own, see X11ModifierKeys

/// A key that has no virtual code gets one outside their range: 0x1000 plus the server's.
[[nodiscard]] int toVirtual(xcb_keycode_t key);

/// The keys that have this virtual code; several when keys share one, none when no keyboard has it.
[[nodiscard]] std::vector<xcb_keycode_t> fromVirtual(int keyCode);

/// The key that plays Fn.
[[nodiscard]] std::optional<xcb_keycode_t> ofStandIn(FnStandIn standIn);

} // namespace velmora::X11KeyCodes
