#pragma once

#include "support/desktop/physical_keyboard.h"
#include "support/desktop/pointer.h"
#include "support/desktop/tray.h"
#include "window_watch.h"

namespace velmora::bench {

namespace key { // evdev codes of a PC keyboard, plus 8
inline constexpr xcb_keycode_t escape = 9;
inline constexpr xcb_keycode_t digit1 = 10;
inline constexpr xcb_keycode_t digit2 = 11;
inline constexpr xcb_keycode_t digit3 = 12;
inline constexpr xcb_keycode_t backspace = 22;
inline constexpr xcb_keycode_t tab = 23;
inline constexpr xcb_keycode_t letterW = 25;
inline constexpr xcb_keycode_t enter = 36;
inline constexpr xcb_keycode_t letterF = 41;
inline constexpr xcb_keycode_t comma = 59;
inline constexpr xcb_keycode_t left = 113;
inline constexpr xcb_keycode_t right = 114;
inline constexpr xcb_keycode_t down = 116;
inline constexpr xcb_keycode_t pageDown = 117;
} // namespace key

/// A user who works the program's windows by the tray icon and the keyboard, and notes how long they take.
/// Throws NotMeasured when one doesn't come.
class WindowUser {
public:
    /// With a tray of its own, in which the running program's icon appears.
    WindowUser();

    struct Opened {
        xcb_window_t window = 0;
        double milliseconds = 0; ///< from the click or the key to more than half of it drawn
    };
    [[nodiscard]] Opened openPopup();
    void closePopup(const Opened& popup);
    /// By "История" in the popup.
    [[nodiscard]] Opened openHistory();
    void closeMainWindow(const Opened& window);

    void press(xcb_keycode_t key) { m_keyboard.tap(key); }
    void chord(xcb_keycode_t modifier, xcb_keycode_t key);
    [[nodiscard]] WindowWatch& watch() { return m_watch; }

private:
    test::Tray m_tray;
    test::Pointer m_pointer;
    test::PhysicalKeyboard m_keyboard;
    WindowWatch m_watch;
    QPoint m_icon;
};

} // namespace velmora::bench
