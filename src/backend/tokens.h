#pragma once

#include "foundation/json_value.h"

namespace velmora {

/// What proves the sign-in. Also the content of the token file and the reply of a rotation.
struct Tokens {
    QString accessToken;  ///< a JWT, read for its expiry alone
    QString refreshToken; ///< opaque

    bool operator==(const Tokens&) const = default;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("accessToken", &Tokens::accessToken),
                          json::field("refreshToken", &Tokens::refreshToken));
    }
};

} // namespace velmora
