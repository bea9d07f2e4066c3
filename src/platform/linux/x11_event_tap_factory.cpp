#include "platform/linux/x11_event_tap_factory.h"

#include "platform/linux/x11_event_tap.h"

namespace velmora {

X11EventTapFactory::X11EventTapFactory(QByteArray display)
    : m_display(std::move(display)) {}

std::unique_ptr<EventTap> X11EventTapFactory::createTap(EventTapMode mode, EventTap::Callback callback) {
    if (!m_pause.isOver())
        return nullptr;
    auto tap = std::make_unique<X11EventTap>(m_display, mode, std::move(callback));
    if (!tap->isEnabled()) {
        m_pause.failed();
        return nullptr;
    }
    m_pause = {};
    return tap;
}

} // namespace velmora
