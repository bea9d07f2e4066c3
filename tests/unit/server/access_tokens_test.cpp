#include "accounts/access_tokens.h"
#include "accounts/base64_url.h"
#include "test_clock.h"

#include <Poco/JSON/Object.h>
#include <Poco/JSON/Parser.h>
#include <gmock/gmock.h>
#include <sodium.h>

namespace velmora::server {
namespace {

class AccessTokensTest : public testing::Test {
protected:
    TestClock time;
    AccessTokens tokens{HmacKey{1, 2, 3}, time.clock()};
    AccessClaims claims{.accountId = "account", .sessionId = "session"};
    Session session{.id = "session",
                    .accountId = "account",
                    .refreshToken = "refresh token",
                    .pair = "pair",
                    .issuedAt = std::chrono::floor<std::chrono::seconds>(time.now)};
};

std::string middleOf(const std::string& token) {
    const auto first = token.find('.');
    return fromBase64Url(token.substr(first + 1, token.rfind('.') - first - 1)).value();
}

TEST_F(AccessTokensTest, Issued_IsVerified) {
    EXPECT_EQ(tokens.verify(tokens.issue(session)), claims);
}

TEST_F(AccessTokensTest, Payload_HasNumericExpiryAfterAQuarterOfAnHour) {
    Poco::JSON::Parser parser;
    const auto payload = parser.parse(middleOf(tokens.issue(session))).extract<Poco::JSON::Object::Ptr>();
    EXPECT_TRUE(payload->get("exp").isInteger());
    EXPECT_EQ(payload->getValue<std::int64_t>("exp"), 1'800'000'000 + 15 * 60);
}

TEST_F(AccessTokensTest, Expired_IsRefused) {
    const auto token = tokens.issue(session);
    time.now += std::chrono::minutes(15) - std::chrono::seconds(1);
    EXPECT_TRUE(tokens.verify(token));
    time.now += std::chrono::seconds(1);
    EXPECT_FALSE(tokens.verify(token));
}

TEST_F(AccessTokensTest, OtherKey_IsRefused) {
    const AccessTokens others(HmacKey{9}, time.clock());
    EXPECT_FALSE(tokens.verify(others.issue(session)));
}

TEST_F(AccessTokensTest, AnyChangedByte_IsRefused) {
    const auto token = tokens.issue(session);
    for (std::size_t i = 0; i < token.size(); ++i) {
        auto changed = token;
        changed[i] = changed[i] == 'A' ? 'B' : 'A';
        EXPECT_FALSE(tokens.verify(changed)) << i;
    }
}

TEST_F(AccessTokensTest, AlgorithmNone_IsRefused) {
    const auto token = tokens.issue(session);
    const auto first = token.find('.');
    const auto payload = token.substr(first, token.rfind('.') - first + 1);
    EXPECT_FALSE(tokens.verify(toBase64Url(R"({"alg":"none","typ":"JWT"})") + payload));
}

TEST_F(AccessTokensTest, OtherHeader_IsRefused_ThoughItIsSigned) {
    const auto token = tokens.issue(session);
    const auto payload = token.substr(token.find('.'), token.rfind('.') - token.find('.'));
    const auto signedWith = [&](const std::string& header) {
        const auto text = toBase64Url(header) + payload;
        const HmacKey key{1, 2, 3};
        std::string signature(crypto_auth_hmacsha256_BYTES, '\0');
        crypto_auth_hmacsha256(reinterpret_cast<unsigned char*>(signature.data()),
                               reinterpret_cast<const unsigned char*>(text.data()), text.size(), key.data());
        return text + '.' + toBase64Url(signature);
    };
    EXPECT_TRUE(tokens.verify(signedWith(R"({"alg":"HS256","typ":"JWT"})")));
    EXPECT_FALSE(tokens.verify(signedWith(R"({"alg":"none","typ":"JWT"})")));
}

TEST_F(AccessTokensTest, Garbage_IsRefused) {
    for (const std::string garbage : {"", ".", "..", "...", "a.b.c", "eyJ", "\xFF.\xFF.\xFF"}) {
        EXPECT_FALSE(tokens.verify(garbage)) << garbage;
    }
}

TEST_F(AccessTokensTest, SignatureOfAnotherLength_IsRefused) {
    const auto token = tokens.issue(session);
    const auto signature = token.rfind('.') + 1;
    for (auto length = signature; length < token.size(); ++length) {
        EXPECT_FALSE(tokens.verify(token.substr(0, length))) << length - signature;
    }
    EXPECT_FALSE(tokens.verify(token + "AAAA"));
    EXPECT_FALSE(tokens.verify(token + std::string(100'000, 'A')));
    EXPECT_FALSE(tokens.verify(token.substr(0, signature - 1)));
}

TEST_F(AccessTokensTest, MoreOrFewerParts_AreRefused) {
    const auto token = tokens.issue(session);
    EXPECT_FALSE(tokens.verify("." + token));
    EXPECT_FALSE(tokens.verify(token + "."));
    EXPECT_FALSE(tokens.verify(token.substr(token.find('.') + 1)));
}

TEST_F(AccessTokensTest, Expired_IsStillOurs_AForgedOneNeverWas) {
    const auto token = tokens.issue(session);
    time.now += std::chrono::hours(1);
    EXPECT_FALSE(tokens.verify(token));
    EXPECT_TRUE(tokens.isOurs(token));
    EXPECT_FALSE(tokens.isOurs(AccessTokens(HmacKey{9}, time.clock()).issue(session)));
}

TEST_F(AccessTokensTest, TwoOfOneMoment_Differ_AndThoseOfOnePairAreTheSame) {
    auto other = session;
    other.pair = "other";
    EXPECT_NE(tokens.issue(session), tokens.issue(other));
    const auto once = tokens.issue(session);
    time.now += std::chrono::seconds(20);
    EXPECT_EQ(tokens.issue(session), once);
}

TEST_F(AccessTokensTest, RefreshToken_IsNotInIt) {
    EXPECT_THAT(middleOf(tokens.issue(session)), testing::Not(testing::HasSubstr("refresh")));
}

} // namespace
} // namespace velmora::server
