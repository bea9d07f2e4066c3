#include "pages/sign_in_page.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(SignInPage, WhateverWasTyped_IsEscaped) {
    const std::string attack = R"("><script>alert('x')</script>&)";
    const auto page =
        SignInPage{
            .state = attack, .formToken = attack, .email = attack, .problem = attack, .localName = attack}
            .render();
    EXPECT_THAT(page.html, Not(HasSubstr("<script")));
    EXPECT_THAT(page.html, HasSubstr("&quot;&gt;&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;&amp;"));
}

TEST(SignInPage, LocalButton_IsThereOnlyWithAName) {
    SignInPage page{.state = "s", .formToken = "t", .email = {}, .problem = {}, .localName = std::nullopt};
    EXPECT_THAT(page.render().html, Not(HasSubstr("Продолжить как")));
    page.localName = "Анна";
    EXPECT_THAT(page.render().html, HasSubstr("Продолжить как Анна"));
}

TEST(SignInPage, Policy_AllowsItsOwnStyleAlone) {
    const auto one = SignInPage{}.render();
    const auto other = SignInPage{}.render();
    EXPECT_THAT(one.contentSecurityPolicy, HasSubstr("default-src 'none'"));
    EXPECT_THAT(one.contentSecurityPolicy, HasSubstr("frame-ancestors 'none'"));
    EXPECT_NE(one.contentSecurityPolicy, other.contentSecurityPolicy);
}

TEST(SignInPage, CallbackUrl_IsPercentEncoded) {
    EXPECT_EQ(callbackUrl("a.b-c_~", "x/y+z=", "s&t ю"),
              "velmora://auth?token=a.b-c_~&refresh=x%2Fy%2Bz%3D&state=s%26t%20%D1%8E");
}

TEST(SignInPage, SignedIn_LeadsOnByItselfAndByLink) {
    const auto page = signedInPage(callbackUrl("t", "r", "s"));
    EXPECT_THAT(
        page.html,
        HasSubstr(
            R"(<meta http-equiv="refresh" content="0;url=velmora://auth?token=t&amp;refresh=r&amp;state=s">)"));
    EXPECT_THAT(page.html,
                HasSubstr(R"(href="velmora://auth?token=t&amp;refresh=r&amp;state=s">Открыть Velmora</a>)"));
}

} // namespace
} // namespace velmora::server
