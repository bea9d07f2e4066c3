#pragma once

#include "accounts/clock.h"
#include "accounts/signing_key.h"

#include <cstdint>
#include <string>

namespace velmora::server {

/// Tokens that a form carries, so that only a page of this server, made for the same state (a handshake, say)
/// and not long ago, can be sent.
class FormTokens {
public:
    FormTokens(const HmacKey& key, Clock clock);

    [[nodiscard]] std::string issue(const std::string& state) const;
    [[nodiscard]] bool verify(const std::string& token, const std::string& state) const;

private:
    [[nodiscard]] std::string tokenFor(std::int64_t expiry, const std::string& state) const;

    HmacKey m_key;
    Clock m_clock;
};

} // namespace velmora::server
