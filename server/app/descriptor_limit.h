#pragma once

#include <cstddef>

namespace velmora::server {

/// How many descriptors the process may have open.
[[nodiscard]] std::size_t descriptorLimit();

/// Takes what the system grants for the asking: shells and service managers start programs with far less.
void raiseDescriptorLimit();

} // namespace velmora::server
