#pragma once

#include "platform/linux/x11_connection.h"

#include <xcb/xinput.h>

#include <bitset>
#include <vector>

namespace velmora {

using X11Keys = std::bitset<256>;

/// One keyboard of the X server; what they type together makes up the session's.
struct X11Keyboard {
    xcb_input_device_id_t id = 0;
    bool isReal = true;     ///< not a server's XTEST keyboard, on which programs type
    bool isAttached = true; ///< its keys count in the session now; a grab can detach it

    bool operator==(const X11Keyboard&) const = default;
};

/// Agrees on the input extension's version with the server, before anything else of it is used. False when
/// there is none, or one too old to hear keys during another program's grab.
[[nodiscard]] bool setUpInputExtension(X11Connection& connection);

[[nodiscard]] std::vector<X11Keyboard> x11Keyboards(X11Connection& connection);

/// What the keyboards type into, one with a focus of its own for each person at the machine; mostly one.
[[nodiscard]] std::vector<xcb_input_device_id_t> x11SessionKeyboards(X11Connection& connection);

/// Which keys are down on each of the keyboards when the server comes to the question; what is asked of it
/// before and after keeps its place. Of a keyboard that is gone: none.
class PressedKeysQuestion {
public:
    PressedKeysQuestion(X11Connection& connection, const std::vector<X11Keyboard>& keyboards);
    /// Waits for them. To be called once.
    [[nodiscard]] std::vector<X11Keys> answers();

private:
    X11Connection& m_connection;
    std::vector<xcb_input_query_device_state_cookie_t> m_asked;
};

/// The keys that are down on each of them now, in one round trip.
[[nodiscard]] std::vector<X11Keys> pressedKeys(X11Connection& connection,
                                               const std::vector<X11Keyboard>& keyboards);

/// A server's bitmap of keys.
[[nodiscard]] X11Keys keysFromBytes(const uint8_t (&bytes)[32]);

} // namespace velmora
