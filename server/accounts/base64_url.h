#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmora::server {

/// Base64 in the URL alphabet, without padding.
[[nodiscard]] std::string toBase64Url(std::string_view bytes);

/// Empty if the text is not exactly what toBase64Url writes.
[[nodiscard]] std::optional<std::string> fromBase64Url(std::string_view text);

} // namespace velmora::server
