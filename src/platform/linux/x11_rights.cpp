#include "platform/linux/x11_rights.h"

#include "platform/linux/x11_keyboards.h"
#include "platform/linux/x11_paste_system.h"

namespace velmora {

bool canWatchKeys(const QByteArray& display) {
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return false;
    X11Connection connection(display);
    return setUpInputExtension(connection);
}

bool canPostPastes(const QByteArray& display) {
    return X11PasteSystem::canWorkWith(X11Connection(display));
}

} // namespace velmora
