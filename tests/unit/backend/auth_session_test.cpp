#include "auth_fixture.h"
#include "backend/jwt_expiry.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

const QByteArray meReply =
    R"({"user":{"id":"u1","email":"a@b.c","isAdmin":false,)"
    R"("createdAt":"2026-03-01T10:20:30.123Z","emailVerifiedAt":"2026-03-01T10:20:31Z"},)"
    R"("preferences":{"transcribeLanguage":"en","cleanupEnabled":false,)"
    R"("devModeEnabled":true},"plan":"pro"})";

QString jwt(const QByteArray& payload) {
    return QStringLiteral("h.%1.s").arg(QString::fromLatin1(
        payload.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals)));
}

struct AuthSessionTest : AuthFixture {
    void signInWithExpiry(std::chrono::seconds ahead) {
        const auto exp = qint64(toUnixSeconds(loop.date())) + ahead.count();
        store.save(jwt(QByteArray(R"({"sub":"u1","exp":)") + QByteArray::number(exp) + "}"),
                   QStringLiteral("refresh-1"));
    }
    void loadMe() {
        const Outcome<> me(session.refreshMe());
        transport.last().reply(200, meReply);
        ASSERT_TRUE(session.user());
    }
};

} // namespace

TEST_F(AuthSessionTest, RefreshMe_SignedOut_ReturnsAtOnce) {
    store.clear();
    const QSignalSpy loading(&session, &AuthSession::isLoadingChanged);
    EXPECT_TRUE(Outcome<>(session.refreshMe()).succeeded());
    EXPECT_EQ(transport.count(), 0U);
    EXPECT_EQ(loading.size(), 0);
}

TEST_F(AuthSessionTest, RefreshMe_Succeeds_PublishesUserAndPreferences) {
    const QSignalSpy users(&session, &AuthSession::userChanged);
    const QSignalSpy preferences(&session, &AuthSession::preferencesChanged);
    const QSignalSpy loading(&session, &AuthSession::isLoadingChanged);
    EXPECT_FALSE(session.isLoading());
    const Outcome<> me(session.refreshMe());
    EXPECT_TRUE(session.isLoading());
    EXPECT_EQ(loading.size(), 1);
    EXPECT_EQ(transport.last().request.url.path(), QStringLiteral("/v1/auth/me"));
    EXPECT_EQ(transport.last().request.method, "GET");
    transport.last().reply(200, meReply);
    EXPECT_TRUE(me.succeeded());
    EXPECT_FALSE(session.isLoading());
    EXPECT_EQ(loading.size(), 2);
    const Date created = Date(1'772'360'430s) + 123ms;
    EXPECT_EQ(session.user(), (BackendUser{QStringLiteral("u1"), QStringLiteral("a@b.c"),
                                           Date(1'772'360'431s), false, created}));
    EXPECT_EQ(session.preferences(), (BackendPreferences{QStringLiteral("en"), false, true, std::nullopt}));
    EXPECT_THAT((std::array{users.size(), preferences.size()}), testing::ElementsAre(1, 1));
    loadMe();
    EXPECT_THAT((std::array{users.size(), preferences.size()}), testing::ElementsAre(1, 1));
}

TEST_F(AuthSessionTest, RefreshMe_Fails_KeepsTheOldValuesAndTellsNobody) {
    loadMe();
    const auto user = session.user();
    for (const auto& [status, body] : std::vector<std::pair<qint64, QByteArray>>{
             {500, ""}, {200, "{}"}, {200, R"({"user":{}})"}, {0, ""}}) {
        const Outcome<> me(session.refreshMe());
        transport.last().reply(status, body);
        EXPECT_TRUE(me.succeeded());
        EXPECT_EQ(session.user(), user);
        EXPECT_FALSE(session.isLoading());
    }
    const Outcome<> me(session.refreshMe());
    transport.last().fail(QStringLiteral("no network"));
    EXPECT_TRUE(me.succeeded());
    EXPECT_EQ(session.user(), user);
}

TEST_F(AuthSessionTest, RefreshMe_DateThatIsNone_Fails) {
    const Outcome<MeResponse> me(session.authedRequest<MeResponse>(QStringLiteral("/v1/auth/me")));
    transport.last().reply(200, QByteArray(meReply).replace("2026-03-01T10:20:30.123Z", "yesterday"));
    EXPECT_EQ(me.failure(), QStringLiteral("Cannot parse date: yesterday")) << qPrintable(me.failure());
}

TEST_F(AuthSessionTest, SessionExpired_SignedOutWhileUserStaysTheOld) {
    loadMe();
    const Outcome<> me(session.refreshMe());
    transport.last().reply(401);
    transport.last().reply(401);
    EXPECT_FALSE(session.isLoggedIn());
    EXPECT_TRUE(session.user());
    EXPECT_TRUE(session.preferences());
    EXPECT_FALSE(session.isLoading());
}

TEST_F(AuthSessionTest, EnsureFreshToken_SignedOut_NoEffect) {
    store.clear();
    EXPECT_TRUE(Outcome<>(session.ensureFreshToken()).succeeded());
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(AuthSessionTest, EnsureFreshToken_NotAJWT_NoEffect) {
    for (const char* token : {"opaque", "a.b", "a.b.c", "a.b.c.d", "", "..."}) {
        store.save(QString::fromLatin1(token), QStringLiteral("r"));
        EXPECT_TRUE(Outcome<>(session.ensureFreshToken()).succeeded());
    }
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(AuthSessionTest, EnsureFreshToken_Expiry119SecondsAhead_Rotates) {
    signInWithExpiry(119s);
    const Outcome<> fresh(session.ensureFreshToken());
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_FALSE(fresh.isDone());
    replyWithNewTokens();
    EXPECT_TRUE(fresh.succeeded());
    EXPECT_EQ(store.tokens()->accessToken, QStringLiteral("access-2"));
}

TEST_F(AuthSessionTest, EnsureFreshToken_Expiry120SecondsAheadOrMore_NoEffect) {
    for (const auto ahead : {120s, 3600s}) {
        signInWithExpiry(ahead);
        EXPECT_TRUE(Outcome<>(session.ensureFreshToken()).succeeded());
    }
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(AuthSessionTest, EnsureFreshToken_TimePasses_RotatesWhenTwoMinutesAreLeft) {
    signInWithExpiry(180s);
    loop.advance(60s);
    EXPECT_TRUE(Outcome<>(session.ensureFreshToken()).succeeded());
    loop.advance(1s);
    const Outcome<> fresh(session.ensureFreshToken());
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(AuthSessionTest, EnsureFreshToken_PastExpiry_Rotates) {
    signInWithExpiry(-3600s);
    const Outcome<> fresh(session.ensureFreshToken());
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(AuthSessionTest, EnsureFreshToken_RotationFails_IgnoredAndStillSignedIn) {
    signInWithExpiry(0s);
    const Outcome<> fresh(session.ensureFreshToken());
    transport.last().fail(QStringLiteral("no network"));
    EXPECT_TRUE(fresh.succeeded());
    EXPECT_TRUE(store.isLoggedIn());
}

TEST_F(AuthSessionTest, EnsureFreshToken_TwiceAtOnce_OneRotation) {
    signInWithExpiry(0s);
    const Outcome<> one(session.ensureFreshToken());
    const Outcome<> two(session.ensureFreshToken());
    EXPECT_EQ(transport.count(), 1U);
    replyWithNewTokens();
    EXPECT_TRUE(one.succeeded());
    EXPECT_TRUE(two.succeeded());
}

TEST_F(AuthSessionTest, Logout_TellsTheServerAndForgetsEverything) {
    loadMe();
    const Outcome<> out(session.logout());
    EXPECT_EQ(transport.last().request.url.path(), QStringLiteral("/v1/auth/logout"));
    EXPECT_EQ(transport.last().request.method, "POST");
    EXPECT_EQ(transport.last().request.body, "");
    EXPECT_TRUE(store.isLoggedIn());
    transport.last().reply(204);
    EXPECT_TRUE(out.succeeded());
    EXPECT_FALSE(session.isLoggedIn());
    EXPECT_EQ(session.user(), std::nullopt);
    EXPECT_EQ(session.preferences(), std::nullopt);
}

TEST_F(AuthSessionTest, Logout_RequestFails_CompletesHereAllTheSame) {
    loadMe();
    const Outcome<> out(session.logout());
    transport.last().fail(QStringLiteral("no network"));
    EXPECT_TRUE(out.succeeded());
    EXPECT_FALSE(session.isLoggedIn());
    EXPECT_EQ(session.user(), std::nullopt);
}

TEST_F(AuthSessionTest, Logout_SessionExpiredBefore_EmptiesTheOldUserWithoutARequest) {
    loadMe();
    store.clear();
    const std::size_t before = transport.count();
    EXPECT_TRUE(Outcome<>(session.logout()).succeeded());
    EXPECT_EQ(session.user(), std::nullopt);
    EXPECT_EQ(transport.count(), before);
}

TEST(JwtExpiry, PayloadOfAnyBase64urlLength_Decodes) {
    for (const char* padding : {"", "x", "xx", "xxx", "xxxx"}) {
        const QByteArray payload = QByteArray(R"({"exp":1772360430,"p":")") + padding + "\"}";
        EXPECT_EQ(jwtExpiry(jwt(payload)), 1772360430.0) << padding;
    }
}

TEST(JwtExpiry, PayloadWithBothURLCharacters_Decodes) {
    const QString token = jwt(R"({"exp":5,"p":"~~~???>>>ÿÿ"})");
    ASSERT_TRUE(token.contains(QLatin1Char('-')) && token.contains(QLatin1Char('_'))) << qPrintable(token);
    EXPECT_EQ(jwtExpiry(token), 5.0);
}

TEST(JwtExpiry, EmptyParts_AreDropped) {
    EXPECT_EQ(jwtExpiry(QStringLiteral(".") +
                        jwt(R"({"exp":1.5})").replace(QLatin1Char('.'), QStringLiteral(".."))),
              1.5);
}

TEST(JwtExpiry, AnythingElse_IsNone) {
    for (const QString& token :
         {QString(), QStringLiteral("a.b"), QStringLiteral("a.!!!!.c"), QStringLiteral("a.aaaaa.c"),
          jwt("not json"), jwt("[1]"), jwt("{}"), jwt(R"({"exp":"1"})"), jwt(R"({"exp":null})"),
          jwt(R"({"exp":true})"), jwt(R"({"exp":1})") + QStringLiteral(".x")})
        EXPECT_EQ(jwtExpiry(token), std::nullopt) << qPrintable(token);
}
