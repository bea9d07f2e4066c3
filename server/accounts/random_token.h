#pragma once

#include <string>

namespace velmora::server {

/// 32 bytes from the system's generator as base64url without padding: 43 characters.
[[nodiscard]] std::string randomToken();

} // namespace velmora::server
