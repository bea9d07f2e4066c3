#include "accounts/access_tokens.h"
#include "accounts/base64_url.h"
#include "test_clock.h"

#include <Poco/JSON/Object.h>
#include <Poco/JSON/Parser.h>
#include <gmock/gmock.h>

namespace velmora::server {
namespace {

class AccessTokensTest : public testing::Test {
protected:
    TestClock time;
    AccessTokens tokens{HmacKey{1, 2, 3}, time.clock()};
    AccessClaims claims{.accountId = "account", .sessionId = "session"};
};

std::string middleOf(const std::string& token) {
    const auto first = token.find('.');
    return fromBase64Url(token.substr(first + 1, token.rfind('.') - first - 1)).value();
}

TEST_F(AccessTokensTest, Issued_IsVerified) {
    EXPECT_EQ(tokens.verify(tokens.issue(claims)), claims);
}

TEST_F(AccessTokensTest, Payload_HasNumericExpiryAfterAQuarterOfAnHour) {
    Poco::JSON::Parser parser;
    const auto payload = parser.parse(middleOf(tokens.issue(claims))).extract<Poco::JSON::Object::Ptr>();
    EXPECT_TRUE(payload->get("exp").isInteger());
    EXPECT_EQ(payload->getValue<std::int64_t>("exp"), 1'800'000'000 + 15 * 60);
}

TEST_F(AccessTokensTest, Expired_IsRefused) {
    const auto token = tokens.issue(claims);
    time.now += std::chrono::minutes(15) - std::chrono::seconds(1);
    EXPECT_TRUE(tokens.verify(token));
    time.now += std::chrono::seconds(1);
    EXPECT_FALSE(tokens.verify(token));
}

TEST_F(AccessTokensTest, OtherKey_IsRefused) {
    const AccessTokens others(HmacKey{9}, time.clock());
    EXPECT_FALSE(tokens.verify(others.issue(claims)));
}

TEST_F(AccessTokensTest, AnyChangedByte_IsRefused) {
    const auto token = tokens.issue(claims);
    for (std::size_t i = 0; i < token.size(); ++i) {
        auto changed = token;
        changed[i] = changed[i] == 'A' ? 'B' : 'A';
        EXPECT_FALSE(tokens.verify(changed)) << i;
    }
}

TEST_F(AccessTokensTest, AlgorithmNone_IsRefused) {
    const auto token = tokens.issue(claims);
    const auto first = token.find('.');
    const auto payload = token.substr(first, token.rfind('.') - first + 1);
    EXPECT_FALSE(tokens.verify(toBase64Url(R"({"alg":"none","typ":"JWT"})") + payload));
}

TEST_F(AccessTokensTest, Garbage_IsRefused) {
    for (const std::string garbage : {"", ".", "..", "...", "a.b.c", "eyJ", "\xFF.\xFF.\xFF"}) {
        EXPECT_FALSE(tokens.verify(garbage)) << garbage;
    }
}

TEST_F(AccessTokensTest, TwoOfOneMoment_Differ) {
    EXPECT_NE(tokens.issue(claims), tokens.issue(claims));
}

} // namespace
} // namespace velmora::server
