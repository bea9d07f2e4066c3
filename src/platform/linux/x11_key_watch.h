#pragma once

#include "platform/event_tap.h"
#include "platform/linux/x11_chord_grab.h"
#include "platform/linux/x11_injection_guard.h"
#include "platform/linux/x11_modifier_keys.h"

#include <QTimer>

#include <functional>
#include <map>

namespace velmora {

/// Hears all keyboards of one X server, over a connection of its own and for as long as that lasts.
class X11KeyWatch {
public:
    using Handler = std::function<void(const KeyEvent&)>;

    /// What sets the bit of Caps Lock.
    enum class CapsLockBit { OfLock, OfKey };

    /// Null when there is no such server, or one that doesn't let programs listen. The handler may not
    /// destroy the watch.
    [[nodiscard]] static std::unique_ptr<X11KeyWatch> open(const QByteArray& display, Handler handler,
                                                           CapsLockBit capsLockBit = CapsLockBit::OfLock);
    X11KeyWatch(const X11KeyWatch&) = delete;
    X11KeyWatch& operator=(const X11KeyWatch&) = delete;

    [[nodiscard]] bool isOpen() const { return m_connection->isOpen(); }

    /// Counts from the next press on: a key that is held remains what it was.
    void setFnStandIn(FnStandIn standIn);
    /// Keeps the chord from the applications as far as the server can.
    void claim(const std::optional<KeyChord>& chord);
    /// Reports the keys that are down as released.
    void releaseAll();

private:
    X11KeyWatch(std::unique_ptr<X11Connection> connection, Handler handler, CapsLockBit capsLockBit);

    void selectEvents();
    void dispatch();
    void handle(const xcb_generic_event_t& event);
    void handleInput(const xcb_ge_generic_event_t& event);
    void handleRaw(const xcb_input_raw_key_press_event_t& event);
    void handleKeyboard(const xcb_generic_event_t& event);
    void key(const X11Keyboard& keyboard, xcb_keycode_t code, bool down);
    void readKeyboards();
    [[nodiscard]] X11ModifierKeys modifiersNow();
    void readModifiers();
    void grabChord();
    [[nodiscard]] bool usesFn() const;
    [[nodiscard]] bool isFnChordOpen() const;
    void compareWithServer();

    [[nodiscard]] std::vector<X11Keys> pressedByServer();
    [[nodiscard]] X11Keys pressed() const;
    [[nodiscard]] quint64 flags() const;
    void send(KeyEvent::Kind kind, int keyCode, bool repeat = false);

    std::unique_ptr<X11Connection> m_connection;
    Handler m_handler;
    const CapsLockBit m_capsLockBit;
    QTimer m_comparison;
    X11InjectionFilter m_injections;
    X11ModifierKeys m_modifiers;
    X11ChordGrab m_grab;
    std::optional<KeyChord> m_chord;
    std::vector<X11Keyboard> m_keyboards;
    std::map<xcb_input_device_id_t, X11Keys> m_pressed;
    std::optional<xcb_keycode_t> m_standIn;
    X11Keys m_playsFn; // of the keys that are down, those that were Fn's stand-in when they were pressed
    bool m_capsLock = false;
    bool m_mappingChanged = false;
    uint8_t m_inputOpcode = 0;
    int m_keyboardEvent = -1; // of the XKB extension
};

} // namespace velmora
