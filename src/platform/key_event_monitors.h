#pragma once

#include "platform/event_tap.h"

namespace velmora {

/// A live watch over what the user types while it exists; ends with the object.
class KeyEventMonitor {
public:
    virtual ~KeyEventMonitor() = default;
};

/// Makes monitors. While there is one, the keyboard is theirs alone: what is typed reaches no control of the
/// program, no other program and no shortcut of the desktop.
class KeyEventMonitors {
public:
    using Handler = std::function<void(const KeyEvent&)>;

    virtual ~KeyEventMonitors() = default;

    /// Calls the handler on the main thread for every event of that kind, KeyDown or FlagsChanged; it may end
    /// the monitor. No key plays Fn here: the flags are those of the keys themselves. Null when the session
    /// doesn't allow it now.
    [[nodiscard]] virtual std::unique_ptr<KeyEventMonitor> addMonitor(KeyEvent::Kind kind,
                                                                      Handler handler) = 0;
};

} // namespace velmora
