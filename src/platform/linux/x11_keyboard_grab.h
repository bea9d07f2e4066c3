#pragma once

#include "platform/linux/x11_keyboards.h"

#include <memory>
#include <optional>

namespace velmora {

/// Holds the keyboard of an X session: what is typed reaches no window and no shortcut of another program,
/// only those who listen to raw events. The focus stays where it is. What the keys have switched meanwhile
/// inside the server, Caps Lock or the layout, is as before at the end.
class X11KeyboardGrab {
public:
    /// Null when there is no such server, or another program has the keyboard, as one with an open menu.
    [[nodiscard]] static std::unique_ptr<X11KeyboardGrab> take(const QByteArray& display);
    ~X11KeyboardGrab();
    X11KeyboardGrab(const X11KeyboardGrab&) = delete;
    X11KeyboardGrab& operator=(const X11KeyboardGrab&) = delete;

    /// False when the server has hung up.
    [[nodiscard]] bool isHeld();
    /// The keys that are down in the session now.
    [[nodiscard]] X11Keys pressed();

private:
    struct Locks {
        uint8_t modifiers = 0;
        uint8_t layout = 0;

        bool operator==(const Locks&) const = default;
    };

    explicit X11KeyboardGrab(const QByteArray& display);

    [[nodiscard]] bool grab(xcb_input_device_id_t keyboard);
    [[nodiscard]] std::optional<Locks> locks();

    X11Connection m_connection;
    std::vector<xcb_input_device_id_t> m_grabbed;
    std::optional<Locks> m_locksBefore;
};

} // namespace velmora
