#pragma once

#include "platform/linux/x11_keyboards.h"

#include <map>
#include <set>

namespace velmora {

/// Keeps keys from the applications, those of a chord say. A key is grabbed on each real keyboard, which the
/// server detaches from the session from the key's press to its release; what else is typed on it meanwhile
/// is passed on through the XTEST keyboard, so that nothing but the grabbed keys is lost and no modifier
/// stays down. A key that another program types, a remote desktop say, is caught by a grab of the session's
/// keyboard; that one takes the focus from the application while the key is down, and fails while a menu is
/// open.
class X11ChordGrab {
public:
    struct Key {
        xcb_keycode_t code = 0;
        std::vector<uint32_t> states; ///< of the server's modifiers, in which it is grabbed

        bool operator==(const Key&) const = default;
    };

    explicit X11ChordGrab(X11Connection& connection);
    ~X11ChordGrab();
    X11ChordGrab(const X11ChordGrab&) = delete;
    X11ChordGrab& operator=(const X11ChordGrab&) = delete;

    /// Grabs these keys, and no others any more; what stays the same isn't let go in between. What other
    /// programs have grabbed is left to them.
    void set(const std::vector<X11Keyboard>& keyboards, std::vector<Key> keys);

    /// To be called with every event that the grab delivers (XCB_INPUT_KEY_PRESS and XCB_INPUT_KEY_RELEASE).
    void handleGrabbed(const xcb_input_key_press_event_t& event);
    /// To be called with every key that goes up on a real keyboard.
    void handleRelease(xcb_keycode_t key);

private:
    void grab(const Key& key);
    void ungrab(const Key& key);
    [[nodiscard]] bool isGrabbed(xcb_keycode_t key, uint32_t state) const;
    void post(uint8_t kind, xcb_keycode_t key);

    X11Connection& m_connection;
    std::vector<X11Keyboard> m_keyboards; // on which the keys are grabbed
    std::vector<Key> m_keys;
    std::map<xcb_input_device_id_t, xcb_keycode_t> m_detached; // keyboards, and the key that did it
    std::set<xcb_keycode_t> m_passedOn; // down on the XTEST keyboard for one that is detached
    std::set<xcb_keycode_t> m_leftDown; // the same, but the keyboard is back
};

} // namespace velmora
