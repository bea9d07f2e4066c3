#pragma once

#include <string>
#include <string_view>

namespace velmora::server {

/// Text made safe for HTML, within elements and within quoted attributes.
[[nodiscard]] std::string escapeHtml(std::string_view text);

/// A column for a form, or one for reading.
enum class PageWidth { Form, Text };

/// A whole small page in the server's style.
struct HtmlPage {
    std::string html;
    /// Value of the Content-Security-Policy header that goes with it.
    std::string contentSecurityPolicy;

    /// `head` and `body` are HTML, `title` is text.
    [[nodiscard]] static HtmlPage make(std::string_view title, std::string_view head, std::string_view body,
                                       PageWidth width = PageWidth::Form);
};

} // namespace velmora::server
