#include "accounts/form_tokens.h"
#include "test_clock.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

class FormTokensTest : public testing::Test {
protected:
    TestClock time;
    FormTokens tokens{HmacKey{7}, time.clock()};
};

TEST_F(FormTokensTest, Issued_FitsItsStateOnly) {
    const auto token = tokens.issue("state");
    EXPECT_TRUE(tokens.verify(token, "state"));
    EXPECT_FALSE(tokens.verify(token, "other"));
}

TEST_F(FormTokensTest, AfterAnHour_IsRefused) {
    const auto token = tokens.issue("state");
    time.now += std::chrono::hours(1);
    EXPECT_FALSE(tokens.verify(token, "state"));
}

TEST_F(FormTokensTest, ProlongedByHand_IsRefused) {
    auto token = tokens.issue("state");
    ++token[3];
    EXPECT_FALSE(tokens.verify(token, "state"));
}

TEST_F(FormTokensTest, SignatureOfAnotherLength_IsRefused) {
    const auto token = tokens.issue("state");
    for (auto length = token.find('.'); length < token.size(); ++length) {
        EXPECT_FALSE(tokens.verify(token.substr(0, length), "state")) << length;
    }
    EXPECT_FALSE(tokens.verify(token + "A", "state"));
}

TEST_F(FormTokensTest, OtherKey_IsRefused) {
    EXPECT_FALSE(tokens.verify(FormTokens(HmacKey{8}, time.clock()).issue("state"), "state"));
}

TEST_F(FormTokensTest, Garbage_IsRefused) {
    for (const std::string garbage :
         {"", ".", "99999999999", "99999999999.", "99999999999999999999999.x", "-1.x"}) {
        EXPECT_FALSE(tokens.verify(garbage, "state")) << garbage;
    }
}

} // namespace
} // namespace velmora::server
