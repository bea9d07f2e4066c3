#pragma once

#include "pages/html.h"

namespace velmora::server {

/// What is new, from the change log that this program was built with.
[[nodiscard]] HtmlPage newsPage();

/// The licence that this program was built with.
[[nodiscard]] HtmlPage licensePage();

} // namespace velmora::server
