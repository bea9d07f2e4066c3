#pragma once

#include "platform/linux/x11_connection.h"

namespace velmora::test {

/// The keys of the desktop's real keyboard, as the server sees it: not those of its XTEST keyboard, on which
/// programs type. All are let go at the end.
class PhysicalKeyboard {
public:
    /// Of the session's display unless another is named.
    explicit PhysicalKeyboard(const QByteArray& display = {});
    ~PhysicalKeyboard();
    PhysicalKeyboard(const PhysicalKeyboard&) = delete;
    PhysicalKeyboard& operator=(const PhysicalKeyboard&) = delete;

    [[nodiscard]] uint8_t deviceID() const { return m_device; }
    void press(xcb_keycode_t key);
    void release(xcb_keycode_t key);
    void tap(xcb_keycode_t key);
    /// Whether the session takes the key to be down, whichever keyboard pressed it.
    [[nodiscard]] bool isDown(xcb_keycode_t key);
    /// The modifiers in effect, as XCB_MOD_MASK_… bits.
    [[nodiscard]] uint16_t modifiers();

    /// Sets the layouts ("us,ru") for all keyboards and makes one of them the active one, from 0.
    void setLayouts(const char* layouts, uint8_t active = 0);
    /// Which of the layouts is the active one.
    [[nodiscard]] uint8_t layout();

private:
    void fake(uint8_t kind, xcb_keycode_t key);

    X11Connection m_x;
    uint8_t m_device = 0;
    std::vector<xcb_keycode_t> m_down;
};

namespace key { // evdev codes of a PC keyboard, plus 8
inline constexpr xcb_keycode_t escape = 9;
inline constexpr xcb_keycode_t leftControl = 37;
inline constexpr xcb_keycode_t leftShift = 50;
inline constexpr xcb_keycode_t leftAlt = 64;
inline constexpr xcb_keycode_t capsLock = 66;
inline constexpr xcb_keycode_t rightControl = 105;
inline constexpr xcb_keycode_t rightAlt = 108;
inline constexpr xcb_keycode_t leftSuper = 133;
} // namespace key

} // namespace velmora::test
