#pragma once

#include "platform/linux/x11_connection.h"

namespace velmora {

/// A key event of the XTEST keyboard: XCB_KEY_PRESS or XCB_KEY_RELEASE.
void fakeKey(X11Connection& connection, uint8_t kind, xcb_keycode_t key);

/// Strikes the key with that one modifier held, whatever modifiers the user holds: those are taken from the
/// programs for the chord and given back if they are still down. All of it is one message to the server, so
/// that nothing that is typed meanwhile falls in between. The keys are worked off when it returns.
void postChord(X11Connection& connection, xcb_keycode_t modifier, xcb_keycode_t key);

} // namespace velmora
