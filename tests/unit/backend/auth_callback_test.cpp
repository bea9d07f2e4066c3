#include "backend/auth_callback.h"

#include <gmock/gmock.h>

using namespace velmora;

namespace {

AuthCallback parsed(const char* url) {
    return parseAuthCallback(QString::fromUtf8(url));
}

QString state(const char* url) {
    return parsed(url).item(QStringLiteral("state"));
}

} // namespace

TEST(AuthCallback, WellFormed_GivesSchemeHostAndItems) {
    const AuthCallback callback = parsed("velmora://auth?token=a.b-_c&refresh=r%2B1&state=0f&x");
    EXPECT_EQ(callback.scheme, QStringLiteral("velmora"));
    EXPECT_EQ(callback.host, QStringLiteral("auth"));
    EXPECT_EQ(callback.item(QStringLiteral("token")), QStringLiteral("a.b-_c"));
    EXPECT_EQ(callback.item(QStringLiteral("refresh")), QStringLiteral("r+1"));
    EXPECT_EQ(callback.item(QStringLiteral("state")), QStringLiteral("0f"));
    EXPECT_EQ(callback.item(QStringLiteral("link")), QString());
}

TEST(AuthCallback, SchemeAndHost_StandAsWritten) {
    EXPECT_EQ(parsed("VELMORA://auth").scheme, QStringLiteral("VELMORA"));
    EXPECT_EQ(parsed("velmora://Asana-Connected?state=1").host, QStringLiteral("Asana-Connected"));
    EXPECT_EQ(parsed("auth://AUTH").host, QStringLiteral("AUTH"));
    EXPECT_EQ(parsed("velmora://user@auth:80/path?state=1").host, QStringLiteral("auth"));
    EXPECT_EQ(parsed("a://A@a").host, QStringLiteral("a"));
    EXPECT_EQ(parsed("velmora://auth:?state=1").host, QStringLiteral("auth"));
    EXPECT_EQ(parsed("velmora:///auth@x?state=1").host, QString());
    EXPECT_EQ(parsed("/velmora://auth?state=1").host, QString());
    EXPECT_EQ(parsed("velmora://auth").items.size(), 0);
    EXPECT_EQ(parsed("velmora:auth?state=1").host, QString());
    EXPECT_EQ(parsed("velmora:auth?state=1").scheme, QStringLiteral("velmora"));
}

TEST(AuthCallback, ItemOccursSeveralTimes_LastWins) {
    EXPECT_EQ(state("velmora://auth?state=1&token=t&state=2"), QStringLiteral("2"));
    EXPECT_EQ(state("velmora://auth?state=1&state="), QString());
    EXPECT_EQ(state("velmora://auth?state=1&state"), QString());
    EXPECT_EQ(state("velmora://auth?state=1&%73tate=3"), QStringLiteral("3"));
}

TEST(AuthCallback, NamesCompareExactly) {
    EXPECT_EQ(state("velmora://auth?State=1&state%20=2&xstate=3"), QString());
}

TEST(AuthCallback, Values_ArePercentDecodedOnce) {
    EXPECT_EQ(state("velmora://auth?state=%D1%8F%20a%2525"), QStringLiteral("я a%25"));
    EXPECT_EQ(state("velmora://auth?state=a=b=c"), QStringLiteral("a=b=c"));
    EXPECT_EQ(state("velmora://auth?state=a%26b"), QStringLiteral("a&b"));
    EXPECT_EQ(state("velmora://auth?state=a+b"), QStringLiteral("a+b"));
    EXPECT_EQ(state("velmora://auth?state=a%00b").size(), 3);
}

TEST(AuthCallback, QueryEndsAtTheFragmentAndBeginsAtTheFirstQuestionMark) {
    EXPECT_EQ(state("velmora://auth#?state=1"), QString());
    EXPECT_EQ(state("velmora://auth?state=1#state=2"), QStringLiteral("1"));
    EXPECT_EQ(state("velmora://auth?a=?&state=1?2"), QStringLiteral("1?2"));
}

TEST(AuthCallback, ValueThatIsNoUTF8_CountsAsEmpty) {
    EXPECT_EQ(state("velmora://auth?state=%FF"), QString());
    EXPECT_EQ(state("velmora://auth?state=1&state=%D1"), QString());
}

TEST(AuthCallback, CannotBeParsed_IsAllEmpty) {
    for (const char* url :
         {"", "velmora://auth?state=%zz", "velmora://auth?state=%2", "velmora://[auth?state=1",
          "velmora://auth:port?state=1", "velmora://auth?state=<1>", "://auth?state=1"})
        EXPECT_EQ(parsed(url), AuthCallback()) << url;
}
