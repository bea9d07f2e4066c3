#pragma once

#include "pages/html.h"

#include <optional>

namespace velmora::server {

/// The part of a page that asks who is there.
struct EntryForm {
    /// Where it is sent.
    std::string path;
    /// What is sent along: hiddenField()s.
    std::string hidden;
    /// What was typed before, and why it did not do; empty at first.
    std::string email;
    std::string problem;
    /// Whom the one-click button names; without it there is none.
    std::optional<std::string> localName;
    /// Whether it can make an account too.
    bool creates = false;

    [[nodiscard]] std::string render() const;
};

/// An alert, or nothing for an empty text.
[[nodiscard]] std::string alarm(std::string_view problem);

[[nodiscard]] std::string hiddenField(std::string_view name, std::string_view value);

/// A field for a password; `autocomplete` is "current-password" or "new-password".
[[nodiscard]] std::string passwordField(std::string_view label, std::string_view name,
                                        std::string_view autocomplete);

} // namespace velmora::server
