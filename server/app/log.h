#pragma once

#include <string_view>

namespace velmora::server {

/// One line on stderr. Never give it tokens, passwords, e-mail addresses, audio or recognised text.
void log(std::string_view line);

} // namespace velmora::server
