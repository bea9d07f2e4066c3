#pragma once

#include <string>

namespace velmora::bench {

/// What the figures were measured on, in a few lines: processors, memory, descriptors, load.
[[nodiscard]] std::string machine();

} // namespace velmora::bench
