#pragma once

#include "accounts/clock.h"
#include "accounts/session.h"
#include "accounts/signing_key.h"

#include <optional>
#include <string>

namespace velmora::server {

/// What an access token says.
struct AccessClaims {
    std::string accountId;
    std::string sessionId;

    bool operator==(const AccessClaims&) const = default;
};

/// Access tokens: JSON Web Tokens signed with HS256, good for 15 minutes.
class AccessTokens {
public:
    static constexpr std::chrono::minutes lifetime{15};

    AccessTokens(const HmacKey& key, Clock clock);

    /// The same for the same pair of tokens, so that a lost reply can be repeated.
    [[nodiscard]] std::string issue(const Session& session) const;

    /// Empty if the token is malformed, not ours, of another algorithm or expired.
    [[nodiscard]] std::optional<AccessClaims> verify(const std::string& token) const;

    /// True if it was made here, be it long ago.
    [[nodiscard]] bool isOurs(const std::string& token) const;

private:
    [[nodiscard]] std::string sign(const std::string& text) const;

    HmacKey m_key;
    Clock m_clock;
};

} // namespace velmora::server
