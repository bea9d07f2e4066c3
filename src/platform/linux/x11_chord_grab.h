#pragma once

#include "platform/linux/x11_keyboards.h"

#include <map>
#include <set>

namespace velmora {

/// Keeps a chord's key from the applications. The chord is grabbed on each real keyboard, which the server
/// detaches from the session from the key's press to its release; what else is typed on it meanwhile is
/// passed on through the XTEST keyboard, so that nothing but the chord's key is lost and no modifier stays
/// down. A chord that another program types, a remote desktop say, is caught by a grab of the session's
/// keyboard; that one takes the focus from the application while the key is down, and fails while a menu is
/// open.
class X11ChordGrab {
public:
    explicit X11ChordGrab(X11Connection& connection);
    ~X11ChordGrab();
    X11ChordGrab(const X11ChordGrab&) = delete;
    X11ChordGrab& operator=(const X11ChordGrab&) = delete;

    /// Grabs the keys in these states of the server's modifiers, and no others any more. What other programs
    /// have grabbed is left to them.
    void set(const std::vector<X11Keyboard>& keyboards, std::vector<xcb_keycode_t> keys,
             const std::vector<uint32_t>& states);

    /// To be called with every event that the grab delivers (XCB_INPUT_KEY_PRESS and XCB_INPUT_KEY_RELEASE).
    void handleGrabbed(const xcb_input_key_press_event_t& event);
    /// To be called with every key that goes up on a real keyboard.
    void handleRelease(xcb_keycode_t key);

private:
    void grab(const X11Keyboard& keyboard, xcb_keycode_t key, const std::vector<uint32_t>& states);
    void ungrabAll();
    void post(uint8_t kind, xcb_keycode_t key);

    X11Connection& m_connection;
    std::vector<X11Keyboard> m_keyboards; // on which the keys are grabbed
    std::vector<xcb_keycode_t> m_keys;
    std::map<xcb_input_device_id_t, xcb_keycode_t> m_detached; // keyboards, and the key that did it
    std::set<xcb_keycode_t> m_passedOn; // down on the XTEST keyboard for one that is detached
    std::set<xcb_keycode_t> m_leftDown; // the same, but the keyboard is back
};

} // namespace velmora
