#include "platform/linux/x11_compositing.h"

namespace velmora {

X11Compositing::X11Compositing(const QByteArray& display, QObject* parent)
    : Compositing(parent)
    , m_manager("_NET_WM_CM_S0", display)
    , m_active(m_manager.isThere()) {
    connect(&m_manager, &X11ManagerWatch::changed, this, &X11Compositing::follow);
}

void X11Compositing::follow() {
    const bool active = m_manager.isThere();
    if (std::exchange(m_active, active) != active)
        Q_EMIT changed();
}

} // namespace velmora
