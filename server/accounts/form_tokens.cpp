#include "accounts/form_tokens.h"

#include "accounts/base64_url.h"

#include <sodium.h>

#include <charconv>
#include <cstdint>

namespace velmora::server {

namespace {

constexpr std::chrono::hours lifetime{1};

std::int64_t secondsOf(std::chrono::system_clock::time_point time) {
    return std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
}

} // namespace

FormTokens::FormTokens(const HmacKey& key, Clock clock)
    : m_key(key)
    , m_clock(std::move(clock)) {}

std::string FormTokens::issue(const std::string& state) const {
    return tokenFor(secondsOf(m_clock() + lifetime), state);
}

bool FormTokens::verify(const std::string& token, const std::string& state) const {
    std::int64_t expiry = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), expiry);
    if (error != std::errc() || expiry <= secondsOf(m_clock())) {
        return false;
    }
    const auto expected = tokenFor(expiry, state);
    return token.size() == expected.size() &&
           sodium_memcmp(token.data(), expected.data(), expected.size()) == 0;
}

std::string FormTokens::tokenFor(std::int64_t expiry, const std::string& state) const {
    const auto text = std::to_string(expiry) + '.';
    const auto signedText = text + state;
    std::string signature(crypto_auth_hmacsha256_BYTES, '\0');
    crypto_auth_hmacsha256(reinterpret_cast<unsigned char*>(signature.data()),
                           reinterpret_cast<const unsigned char*>(signedText.data()), signedText.size(),
                           m_key.data());
    return text + toBase64Url(signature);
}

} // namespace velmora::server
