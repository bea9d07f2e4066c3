#pragma once

#include "platform/linux/x11_connection.h"

namespace velmora::test {

/// A window of another program, with the keyboard focus, that writes down the keys it gets.
class KeyWindow {
public:
    struct Key {
        bool down = false;
        xcb_keycode_t key = 0;
        uint16_t modifiers = 0; ///< XCB_MOD_MASK_… bits before the event

        bool operator==(const Key&) const = default;
    };

    /// Returns when the window manager has given it the focus.
    KeyWindow();

    /// What has arrived since it was last asked.
    [[nodiscard]] std::vector<Key> takeKeys();
    /// As it has been told last.
    [[nodiscard]] bool hasFocus();
    /// How often it has lost the keyboard focus.
    [[nodiscard]] int focusLosses();
    /// Takes the keyboard for itself, as an open menu does.
    [[nodiscard]] bool grabKeyboard();

private:
    void askForFocus();
    void read();

    X11Connection m_x;
    xcb_window_t m_window;
    std::vector<Key> m_keys;
    bool m_hasFocus = true;
    int m_focusLosses = 0;
};

} // namespace velmora::test
