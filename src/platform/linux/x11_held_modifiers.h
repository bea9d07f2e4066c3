#pragma once

#include "platform/linux/x11_connection.h"

#include <vector>

namespace velmora {

/// Lets go of the modifier keys that are down when it is made, so that they don't mix with the keys posted
/// in its lifetime, and presses those again that the user still holds when it goes.
class X11HeldModifiers {
public:
    explicit X11HeldModifiers(X11Connection& connection);
    ~X11HeldModifiers();
    X11HeldModifiers(const X11HeldModifiers&) = delete;
    X11HeldModifiers& operator=(const X11HeldModifiers&) = delete;

private:
    X11Connection& m_connection;
    std::vector<xcb_keycode_t> m_released;
};

/// A key event of the XTEST keyboard: XCB_KEY_PRESS or XCB_KEY_RELEASE.
void fakeKey(X11Connection& connection, uint8_t kind, xcb_keycode_t key);

} // namespace velmora
