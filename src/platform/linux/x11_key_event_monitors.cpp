#include "platform/linux/x11_key_event_monitors.h"

namespace velmora {

std::unique_ptr<KeyEventMonitor> X11KeyEventMonitors::addMonitor(KeyEvent::Kind, Handler) {
    return nullptr;
}

} // namespace velmora
