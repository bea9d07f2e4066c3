#pragma once

#include <chrono>
#include <string>

namespace velmora::server {

/// A session as its client gets it: with the newest of its refresh tokens.
struct Session {
    std::string id;
    std::string accountId;
    /// Known only here and to the client; the database has its hash.
    std::string refreshToken;
    /// Names this refresh token and the access token that goes with it. No secret.
    std::string pair;
    std::chrono::sys_seconds issuedAt;

    bool operator==(const Session&) const = default;
};

} // namespace velmora::server
