#pragma once

#include "platform/key_event_monitors.h"

namespace velmora {

/// Takes the keyboard of the X session while there is a monitor.
class X11KeyEventMonitors final : public KeyEventMonitors {
public:
    [[nodiscard]] std::unique_ptr<KeyEventMonitor> addMonitor(KeyEvent::Kind kind, Handler handler) override;
};

} // namespace velmora
