#pragma once

#include "platform/linux/x11_keyboards.h"

#include <array>

namespace velmora {

/// What the keys of the session's keyboard do as modifiers: by their place, and by the roles that the user
/// gave to others (Caps Lock as Control, say).
class X11ModifierKeys {
public:
    static X11ModifierKeys read(X11Connection& connection);

    /// Makes Caps Lock a modifier like the others: its bit follows the key, whatever is locked.
    void setCapsLockFollowsKey();

    /// The bits of modifier_flags.h that the key sets while it is down; 0 for one that is no modifier.
    [[nodiscard]] quint64 flags(xcb_keycode_t key) const;
    /// Those of all these keys.
    [[nodiscard]] quint64 flags(const X11Keys& pressed) const;
    /// The key switches Caps Lock over; its bit follows the lock.
    [[nodiscard]] bool isCapsLock(xcb_keycode_t key) const { return m_capsLockKeys[key]; }
    [[nodiscard]] int virtualKeyCode(xcb_keycode_t key) const;

    /// All states of the server's modifiers in which those of the mask, generic bits, are held, with any
    /// others or locks. Of Fn the server knows nothing.
    [[nodiscard]] std::vector<uint32_t> statesWith(quint64 mask) const;

    bool operator==(const X11ModifierKeys&) const = default;

private:
    std::array<quint64, 256> m_flags{};
    X11Keys m_capsLockKeys;
    X11Keys m_fnKeys;
    std::array<uint8_t, 4> m_serverModifiers{}; // of Shift, Control, Option and Command
};

} // namespace velmora
