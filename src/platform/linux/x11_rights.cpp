#include "platform/linux/x11_rights.h"

#include "platform/linux/x11_keyboards.h"
#include "platform/linux/x11_paste_system.h"

namespace velmora {

X11Rights::X11Rights(QByteArray display)
    : m_display(std::move(display)) {}

bool X11Rights::canWatchKeys() {
    askServer();
    return m_canWatchKeys && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool X11Rights::canPostPastes() {
    askServer();
    return m_canPostPastes;
}

// Once, for what a server can do doesn't change.
void X11Rights::askServer() {
    if (m_connection) {
        m_connection->discardEvents(); // which also tells whether it has hung up
        if (m_connection->isOpen())
            return;
        m_connection.reset();
        m_canWatchKeys = m_canPostPastes = false;
    }
    if (!m_pause.isOver())
        return;
    auto connection = std::make_unique<X11Connection>(m_display);
    if (!connection->isOpen()) {
        m_pause.failed();
        return;
    }
    m_pause = {};
    m_canWatchKeys = setUpInputExtension(*connection);
    m_canPostPastes = X11PasteSystem::canWorkWith(*connection);
    m_connection = std::move(connection);
    // Nothing is asked for, but the server tells everybody of keyboard mappings.
    m_connection->listen([this] { m_connection->discardEvents(); });
}

} // namespace velmora
