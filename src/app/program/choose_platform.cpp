#include "choose_platform.h"

#include "platform/linux/x11_connection.h"

namespace velmora {
namespace {

constexpr const char* variable = "QT_QPA_PLATFORM";

bool isOurs = false;

void choose(const char* platform) {
    qputenv(variable, platform);
    isOurs = true;
}

} // namespace

void choosePlatform() {
    if (qEnvironmentVariableIsSet(variable))
        return;
    if (X11Connection().isOpen())
        choose("xcb");
    else if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        choose("offscreen");
}

void forgetPlatform() {
    if (std::exchange(isOurs, false))
        qunsetenv(variable);
}

} // namespace velmora
