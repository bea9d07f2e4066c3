#pragma once

#include <string>
#include <string_view>

namespace velmora::server {

/// HTML of the little Markdown that our documents use: headings, lists with "-", paragraphs, `code`,
/// **bold**. All else is text, and escaped.
[[nodiscard]] std::string markdownToHtml(std::string_view text);

} // namespace velmora::server
