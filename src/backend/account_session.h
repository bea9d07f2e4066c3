#pragma once

#include "foundation/task.h"

namespace velmora {

/// What the dictation needs of the signed-in account.
class AccountSession {
public:
    virtual ~AccountSession() = default;

    [[nodiscard]] virtual bool isLoggedIn() const = 0;
    /// Rotates an access token that ends within two minutes. Never fails.
    virtual Task<> ensureFreshToken() = 0;
    /// Reloads the user and the preferences. Never fails.
    virtual Task<> refreshMe() = 0;
};

} // namespace velmora
