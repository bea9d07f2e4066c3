#pragma once

#include "pages/html.h"

#include <optional>

namespace velmora::server {

/// What the page shows that asks whose account it is.
struct AccountEntryPage {
    std::string formToken;
    std::string email;
    std::string problem;
    std::optional<std::string> localName;

    [[nodiscard]] HtmlPage render() const;
};

/// An account and what can be done with it.
struct AccountPage {
    std::string email;
    std::string accountId;
    std::string formToken;
    int sessions = 0;
    /// Whether there is a password to change.
    bool hasPassword = true;
    /// What was done, or why it could not be; one of them or neither.
    std::string notice;
    std::string problem;

    [[nodiscard]] HtmlPage render() const;
};

} // namespace velmora::server
