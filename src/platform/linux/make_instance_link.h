#pragma once

#include "platform/instance_link.h"

#include <memory>

namespace velmora {

/// Over D-Bus where the session has one, else over a socket of the user's.
[[nodiscard]] std::unique_ptr<InstanceLink> makeInstanceLink();

} // namespace velmora
