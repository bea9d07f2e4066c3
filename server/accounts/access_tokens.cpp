#include "accounts/access_tokens.h"

#include "accounts/base64_url.h"

#include <Poco/JSON/Object.h>
#include <Poco/JSON/Parser.h>
#include <sodium.h>

#include <cstdint>
#include <sstream>

namespace velmora::server {

namespace {

std::int64_t secondsOf(std::chrono::system_clock::time_point time) {
    return std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
}

/// Always this one header: a token that names any other algorithm has another first part, and is not ours.
const std::string& header() {
    static const auto text = toBase64Url(R"({"alg":"HS256","typ":"JWT"})");
    return text;
}

} // namespace

AccessTokens::AccessTokens(const HmacKey& key, Clock clock)
    : m_key(key)
    , m_clock(std::move(clock)) {}

std::string AccessTokens::issue(const Session& session) const {
    Poco::JSON::Object payload;
    payload.set("sub", session.accountId);
    payload.set("sid", session.id);
    // Two tokens of one second would otherwise be the same.
    payload.set("jti", session.pair);
    payload.set("iat", secondsOf(session.issuedAt));
    payload.set("exp", secondsOf(session.issuedAt + lifetime));
    std::ostringstream json;
    payload.stringify(json);
    const auto text = header() + '.' + toBase64Url(json.str());
    return text + '.' + toBase64Url(sign(text));
}

std::optional<AccessClaims> AccessTokens::verify(const std::string& token) const {
    if (!isOurs(token)) {
        return std::nullopt;
    }
    // From here on the text is our own.
    const auto first = token.find('.');
    const auto json = fromBase64Url(std::string_view(token).substr(first + 1, token.rfind('.') - first - 1));
    if (!json) {
        return std::nullopt;
    }
    Poco::JSON::Parser parser;
    const auto payload = parser.parse(*json).extract<Poco::JSON::Object::Ptr>();
    if (payload->getValue<std::int64_t>("exp") <= secondsOf(m_clock())) {
        return std::nullopt;
    }
    return AccessClaims{payload->getValue<std::string>("sub"), payload->getValue<std::string>("sid")};
}

bool AccessTokens::isOurs(const std::string& token) const {
    const auto first = token.find('.');
    const auto last = token.rfind('.');
    if (first == std::string::npos || first == last || token.substr(0, first) != header()) {
        return false;
    }
    const auto signature = fromBase64Url(std::string_view(token).substr(last + 1));
    const auto expected = sign(token.substr(0, last));
    return signature && signature->size() == expected.size() &&
           sodium_memcmp(signature->data(), expected.data(), expected.size()) == 0;
}

std::string AccessTokens::sign(const std::string& text) const {
    std::string signature(crypto_auth_hmacsha256_BYTES, '\0');
    crypto_auth_hmacsha256(reinterpret_cast<unsigned char*>(signature.data()),
                           reinterpret_cast<const unsigned char*>(text.data()), text.size(), m_key.data());
    return signature;
}

} // namespace velmora::server
