#pragma once

#include <string_view>

/// Files of the source tree, built into the program.
namespace velmora::server::documents {

extern const std::string_view changes;
extern const std::string_view license;

} // namespace velmora::server::documents
