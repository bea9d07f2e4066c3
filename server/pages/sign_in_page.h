#pragma once

#include "pages/html.h"

#include <optional>

namespace velmora::server {

/// What the page with the sign-in form shows.
struct SignInPage {
    /// The handshake's value, sent along with the form.
    std::string state;
    std::string formToken;
    /// What was typed before, and why it did not do; empty at first.
    std::string email;
    std::string problem;
    /// Whom the one-click button names; without it there is none.
    std::optional<std::string> localName;

    [[nodiscard]] HtmlPage render() const;
};

/// The page that leads back into the application: by itself, and with a link where the browser wants a click.
[[nodiscard]] HtmlPage signedInPage(const std::string& callbackUrl);

/// The page for a visit that did not begin in the application.
[[nodiscard]] HtmlPage openFromAppPage();

/// "velmora://auth?token=…&refresh=…&state=…", each value percent-encoded.
[[nodiscard]] std::string callbackUrl(std::string_view accessToken, std::string_view refreshToken,
                                      std::string_view state);

} // namespace velmora::server
