#pragma once

#include "accounts/local_user.h"

#include <optional>

namespace velmora::server {

class Exchange;

/// Whom pages let in with one click: the user the server runs as, if it is told to.
class LocalUserOffer {
public:
    explicit LocalUserOffer(std::optional<LocalUser> user);

    /// That user when a program of theirs asks; nobody for all others.
    [[nodiscard]] std::optional<LocalUser> to(const Exchange& exchange) const;

    /// Their name, for the button.
    [[nodiscard]] std::optional<std::string> nameFor(const Exchange& exchange) const;

private:
    std::optional<LocalUser> m_user;
};

} // namespace velmora::server
