#include "platform/linux/make_instance_link.h"

#include "platform/linux/dbus_instance_link.h"
#include "platform/linux/local_socket_instance_link.h"

namespace velmora {

std::unique_ptr<InstanceLink> makeInstanceLink() {
    if (DbusInstanceLink::isAvailable())
        return std::make_unique<DbusInstanceLink>();
    return std::make_unique<LocalSocketInstanceLink>();
}

} // namespace velmora
