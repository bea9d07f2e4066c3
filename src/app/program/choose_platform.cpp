#include "choose_platform.h"

#include "platform/linux/x11_connection.h"

namespace velmora {

void choosePlatform() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    if (X11Connection().isOpen())
        qputenv("QT_QPA_PLATFORM", "xcb");
    else if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace velmora
