#include "auth_fixture.h"
#include "backend/any_codable.h"

using namespace velmora;
using namespace velmora::test;

namespace {

struct AuthSessionRequests : AuthFixture {
    Outcome<HttpReply> get(const QString& path = QStringLiteral("/v1/thing")) {
        return Outcome<HttpReply>(session.rawAuthedRequest(path, "GET"));
    }
};

struct Counted {
    qint64 count = 0;
    static constexpr auto jsonFields() { return std::tuple(json::field("count", &Counted::count)); }
};

template<typename T>
BackendError backendErrorOf(const Outcome<T>& outcome) {
    return outcome.template failureAs<BackendError>().value_or(
        BackendError(-1, QStringLiteral("no BackendError"), outcome.failure()));
}

} // namespace

TEST_F(AuthSessionRequests, Build_PathWithAndWithoutSlash_SameURL) {
    const QUrl expected(QStringLiteral("https://api.example.org/v1/thing"));
    EXPECT_EQ(session.buildAuthedRequest(QStringLiteral("/v1/thing"), "GET").url, expected);
    EXPECT_EQ(session.buildAuthedRequest(QStringLiteral("v1/thing"), "GET").url, expected);
}

TEST_F(AuthSessionRequests, Build_QueryWithASecondQuestionMark_KeepsIt) {
    const HttpRequest request =
        session.buildAuthedRequest(QStringLiteral("/v1/thing?a=b%20c?d=%D1%8F"), "GET");
    EXPECT_EQ(request.url.toEncoded(), "https://api.example.org/v1/thing?a=b%20c?d=%D1%8F");
}

TEST_F(AuthSessionRequests, Build_NothingButAQuery_IsTheQueryOfTheBase) {
    EXPECT_EQ(session.buildAuthedRequest(QStringLiteral("?a=b"), "GET").url.query(), QStringLiteral("a=b"));
}

TEST_F(AuthSessionRequests, Build_BaseWithAPathAndASlash_AppendsAComponent) {
    for (const char* base : {"https://h.example:8443/api", "https://h.example:8443/api/"}) {
        const AuthSession other(transport, store, loop, QUrl(QString::fromLatin1(base)));
        EXPECT_EQ(other.buildAuthedRequest(QStringLiteral("/v1/thing?x=1"), "GET").url.toEncoded(),
                  "https://h.example:8443/api/v1/thing?x=1");
    }
}

TEST_F(AuthSessionRequests, Build_PathWithCharactersOfItsOwn_EscapesThem) {
    EXPECT_EQ(session.buildAuthedRequest(QStringLiteral("/v1/a b%2Fc/д"), "GET").url.toEncoded(),
              "https://api.example.org/v1/a%20b%252Fc/%D0%B4");
}

TEST_F(AuthSessionRequests, Build_SetsMethodBearerTimeoutAndContentTypeWhenGiven) {
    const HttpRequest plain = session.buildAuthedRequest(QStringLiteral("/v1/thing"), "DELETE");
    EXPECT_EQ(plain.method, "DELETE");
    EXPECT_EQ(plain.headers.value("Authorization"), "Bearer access-1");
    EXPECT_EQ(plain.inactivityTimeout, std::chrono::seconds(60));
    EXPECT_TRUE(plain.headers.value("Content-Type").isNull());
    const HttpRequest typed =
        session.buildAuthedRequest(QStringLiteral("/v1/thing"), "PATCH", "application/json");
    EXPECT_EQ(typed.headers.value("Content-Type"), "application/json");
}

TEST_F(AuthSessionRequests, Build_QueryThatIsNotEncoded_FailsWithBadURLNamingThePath) {
    try {
        (void)session.buildAuthedRequest(QStringLiteral("/v1/thing?a=<b c>"), "GET");
        FAIL() << "built";
    } catch (const BackendError& error) {
        EXPECT_EQ(error.status, 0);
        EXPECT_EQ(error.code, QStringLiteral("bad_url"));
        EXPECT_EQ(error.message, QStringLiteral("Некорректный URL запроса: /v1/thing?a=<b c>"));
    }
}

TEST_F(AuthSessionRequests, Request_NoStoredTokens_FailsWithNotLoggedInAndSendsNothing) {
    store.clear();
    const BackendError error = backendErrorOf(get());
    EXPECT_EQ(error.status, 401);
    EXPECT_EQ(error.code, QStringLiteral("not_logged_in"));
    EXPECT_EQ(error.message, QStringLiteral("Не авторизован"));
    EXPECT_EQ(error.localizedDescription(), error.message);
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(AuthSessionRequests, Request_CarriesBodyAndUserAgent) {
    const Outcome<HttpReply> outcome(
        session.rawAuthedRequest(QStringLiteral("/v1/thing"), "PUT", "{}", "application/json"));
    EXPECT_EQ(transport.last().request.method, "PUT");
    EXPECT_EQ(transport.last().request.body, "{}");
    EXPECT_EQ(transport.last().request.headers.value("User-Agent"), "Velmora-macOS/0.1");
    transport.last().reply(204);
    EXPECT_EQ(outcome.value().status, 204);
}

TEST_F(AuthSessionRequests, TransportFailure_LeavesAsItIs) {
    const Outcome<HttpReply> outcome = get();
    transport.last().fail(QStringLiteral("no route"));
    EXPECT_EQ(outcome.failure(), QStringLiteral("no route"));
    EXPECT_TRUE(outcome.failureAs<TransportError>());
    EXPECT_TRUE(store.isLoggedIn());
}

TEST_F(AuthSessionRequests, ReplyThatIsNotHTTP_FailsWithTransportError) {
    const Outcome<HttpReply> outcome = get();
    transport.last().reply(0, "bytes");
    const BackendError error = backendErrorOf(outcome);
    EXPECT_EQ(error.status, 0);
    EXPECT_EQ(error.code, QStringLiteral("transport_error"));
    EXPECT_EQ(error.message, QStringLiteral("Нет ответа от сервера"));
}

TEST_F(AuthSessionRequests, EmptyResponse_EmptyOrForeign2xxBody_Passes) {
    for (const QByteArray& body : {QByteArray(), QByteArray("<html>")}) {
        const Outcome<EmptyResponse> outcome(session.authedRequest<EmptyResponse>(QStringLiteral("/v1/x")));
        transport.last().reply(299, body);
        EXPECT_TRUE(outcome.succeeded());
    }
}

TEST_F(AuthSessionRequests, OtherReply_EmptyBody_FailsInTheDecoder) {
    const Outcome<Counted> outcome(session.authedRequest<Counted>(QStringLiteral("/v1/x")));
    transport.last().reply(200);
    EXPECT_TRUE(outcome.failureAs<json::DecodingError>());
}

TEST_F(AuthSessionRequests, OtherReply_GoodBody_IsDecoded) {
    const Outcome<Counted> outcome(session.authedRequest<Counted>(QStringLiteral("/v1/x")));
    EXPECT_EQ(transport.last().request.method, "GET");
    transport.last().reply(200, R"({"count":7,"more":[]})");
    EXPECT_EQ(outcome.value().count, 7);
}

TEST_F(AuthSessionRequests, ErrorReply_IsMadeOfTheBody) {
    struct Case {
        qint64 status;
        QByteArray body;
        QString code;
        QString message;
    };
    const QString unnamed = QStringLiteral("http_error");
    for (const Case& expected : std::vector<Case>{
             {402, R"({"code":"limit","message":"Лимит исчерпан"})", QStringLiteral("limit"),
              QStringLiteral("Лимит исчерпан")},
             {400, R"({"message":"x"})", unnamed, QStringLiteral("x")},
             {409, R"({"code":"conflict"})", QStringLiteral("conflict"), QStringLiteral("HTTP 409")},
             {404, "{}", unnamed, QStringLiteral("HTTP 404")},
             {502, "<html>Bad gateway</html>", unnamed, QStringLiteral("HTTP 502")},
             {500, "", unnamed, QStringLiteral("HTTP 500")},
             {403, R"({"code":7,"message":"x"})", unnamed, QStringLiteral("HTTP 403")},
             {302, R"({"message":"moved"})", unnamed, QStringLiteral("moved")},
             {199, "", unnamed, QStringLiteral("HTTP 199")},
             {300, "", unnamed, QStringLiteral("HTTP 300")},
         }) {
        const Outcome<HttpReply> outcome = get();
        transport.last().reply(expected.status, expected.body);
        const BackendError error = backendErrorOf(outcome);
        EXPECT_EQ(error.status, expected.status);
        EXPECT_EQ(error.code, expected.code);
        EXPECT_EQ(error.message, expected.message);
    }
    EXPECT_TRUE(store.isLoggedIn());
}

TEST_F(AuthSessionRequests, ErrorReply_DetailsHoldingAnArray_KeepTheKeyWithNull) {
    const Outcome<HttpReply> outcome = get();
    transport.last().reply(422,
                           R"({"details":{"list":[1,2],"n":3,"x":1.5,"b":true,"s":"т","o":{},"z":null}})");
    const BackendError error = backendErrorOf(outcome);
    ASSERT_TRUE(error.details);
    const QMap<QString, AnyCodable> expected{
        {QStringLiteral("list"), {}},
        {QStringLiteral("n"), {qint64(3)}},
        {QStringLiteral("x"), {1.5}},
        {QStringLiteral("b"), {true}},
        {QStringLiteral("s"), {QStringLiteral("т")}},
        {QStringLiteral("o"), {}},
        {QStringLiteral("z"), {}},
    };
    EXPECT_EQ(*error.details, expected);
}

TEST_F(AuthSessionRequests, ErrorReply_DetailsNoObject_IsNoErrorBody) {
    const Outcome<HttpReply> outcome = get();
    transport.last().reply(422, R"({"message":"x","details":"y"})");
    EXPECT_EQ(backendErrorOf(outcome).message, QStringLiteral("HTTP 422"));
}

TEST_F(AuthSessionRequests, FirstReply401_RotatesAndRepeatsWithTheNewTokenAndTheSameBody) {
    const Outcome<HttpReply> outcome(
        session.rawAuthedRequest(QStringLiteral("/v1/thing?q=1"), "POST", "body", "text/plain"));
    transport.at(0).reply(401);
    ASSERT_EQ(transport.count(), 2U);
    replyWithNewTokens();
    ASSERT_EQ(transport.count(), 3U);
    const HttpRequest& repeated = transport.at(2).request;
    EXPECT_EQ(repeated.url, transport.at(0).request.url);
    EXPECT_EQ(repeated.method, "POST");
    EXPECT_EQ(repeated.body, "body");
    EXPECT_EQ(repeated.headers.value("Content-Type"), "text/plain");
    EXPECT_EQ(repeated.headers.value("Authorization"), "Bearer access-2");
    transport.at(2).reply(200, "fine");
    EXPECT_EQ(outcome.value().body, "fine");
}

TEST_F(AuthSessionRequests, Rotation_IsAPostWithoutAuthorization) {
    const Outcome<HttpReply> outcome = get();
    transport.at(0).reply(401);
    const HttpRequest& rotation = transport.at(1).request;
    EXPECT_EQ(rotation.url, QUrl(QStringLiteral("https://api.example.org/v1/auth/refresh")));
    EXPECT_EQ(rotation.method, "POST");
    EXPECT_EQ(rotation.body, R"({"refreshToken":"refresh-1"})");
    EXPECT_EQ(rotation.headers.value("Content-Type"), "application/json");
    EXPECT_EQ(rotation.headers.value("User-Agent"), "Velmora-macOS/0.1");
    EXPECT_TRUE(rotation.headers.value("Authorization").isNull());
    EXPECT_EQ(rotation.inactivityTimeout, std::chrono::seconds(60));
}

TEST_F(AuthSessionRequests, SecondReply401_EndsInSessionExpiredWithoutAThirdAttempt) {
    const Outcome<HttpReply> outcome = get();
    transport.at(0).reply(401);
    replyWithNewTokens();
    transport.at(2).reply(401);
    const BackendError error = backendErrorOf(outcome);
    EXPECT_EQ(error.status, 401);
    EXPECT_EQ(error.code, QStringLiteral("session_expired"));
    EXPECT_EQ(error.message, QStringLiteral("Сессия истекла"));
    EXPECT_FALSE(store.isLoggedIn());
    EXPECT_EQ(transport.count(), 3U);
}

TEST_F(AuthSessionRequests, SecondSend_FailuresApplyAgain) {
    const Outcome<HttpReply> unreachable = get();
    transport.at(0).reply(401);
    replyWithNewTokens();
    transport.at(2).fail(QStringLiteral("cable out"));
    EXPECT_EQ(unreachable.failure(), QStringLiteral("cable out"));

    const Outcome<HttpReply> notHttp = get();
    transport.at(3).reply(401);
    replyWithNewTokens(3);
    transport.at(5).reply(0);
    EXPECT_EQ(backendErrorOf(notHttp).code, QStringLiteral("transport_error"));

    const Outcome<HttpReply> refused = get();
    transport.at(6).reply(401);
    replyWithNewTokens(4);
    transport.at(8).reply(403);
    EXPECT_EQ(backendErrorOf(refused).message, QStringLiteral("HTTP 403"));
    EXPECT_TRUE(store.isLoggedIn());
}

TEST_F(AuthSessionRequests, RotationUnreachable_EndsInSessionExpiredAndSignsOut) {
    const Outcome<HttpReply> outcome = get();
    transport.at(0).reply(401);
    transport.at(1).fail(QStringLiteral("no network"));
    EXPECT_EQ(backendErrorOf(outcome).code, QStringLiteral("session_expired"));
    EXPECT_FALSE(store.isLoggedIn());
    EXPECT_FALSE(QFile::exists(root.filePath(QStringLiteral("auth-tokens.json"))));
}

TEST_F(AuthSessionRequests, RotationReply_AnythingBut200WithBothTokens_EndsInSessionExpired) {
    const QByteArray tokens = R"({"accessToken":"a","refreshToken":"b"})";
    for (const auto& [status, body] :
         std::vector<std::pair<qint64, QByteArray>>{{201, tokens},
                                                    {401, tokens},
                                                    {500, ""},
                                                    {0, tokens},
                                                    {200, R"({"accessToken":"a"})"},
                                                    {200, ""}}) {
        store.save(QStringLiteral("access"), QStringLiteral("refresh"));
        const Outcome<HttpReply> outcome = get();
        transport.last().reply(401);
        transport.last().reply(status, body);
        EXPECT_EQ(backendErrorOf(outcome).code, QStringLiteral("session_expired")) << status;
        EXPECT_FALSE(store.isLoggedIn());
    }
}

TEST_F(AuthSessionRequests, ThreeConcurrent401s_OneRotationAndThreeRepeatedRequests) {
    std::vector<Outcome<HttpReply>> outcomes;
    for (int i = 0; i < 3; ++i)
        outcomes.push_back(get(QStringLiteral("/v1/thing/%1").arg(i)));
    for (std::size_t i = 0; i < 3; ++i)
        transport.at(i).reply(401);
    ASSERT_EQ(transport.count(), 4U);
    replyWithNewTokens();
    ASSERT_EQ(transport.count(), 7U);
    for (std::size_t i = 4; i < 7; ++i) {
        EXPECT_EQ(transport.at(i).request.headers.value("Authorization"), "Bearer access-2");
        transport.at(i).reply(200, transport.at(i).request.url.path().toUtf8());
    }
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(outcomes[std::size_t(i)].value().body, QByteArray("/v1/thing/" + QByteArray::number(i)));
}

TEST_F(AuthSessionRequests, ThreeConcurrent401s_RotationFails_ReachesAllThree) {
    std::vector<Outcome<HttpReply>> outcomes;
    for (int i = 0; i < 3; ++i)
        outcomes.push_back(get());
    for (std::size_t i = 0; i < 3; ++i)
        transport.at(i).reply(401);
    transport.at(3).reply(403);
    EXPECT_EQ(transport.count(), 4U);
    for (const Outcome<HttpReply>& outcome : outcomes)
        EXPECT_EQ(backendErrorOf(outcome).code, QStringLiteral("session_expired"));
}

TEST_F(AuthSessionRequests, A401AfterAFinishedRotation_StartsANewOne) {
    const Outcome<HttpReply> first = get();
    const Outcome<HttpReply> late = get();
    transport.at(0).reply(401);
    replyWithNewTokens();
    transport.at(3).reply(200);
    transport.at(1).reply(401); // for the old token still
    ASSERT_EQ(transport.count(), 5U);
    EXPECT_EQ(transport.at(4).request.body, R"({"refreshToken":"refresh-2"})");
    replyWithNewTokens(3);
    transport.last().reply(200);
    EXPECT_TRUE(first.succeeded());
    EXPECT_TRUE(late.succeeded());
}

TEST_F(AuthSessionRequests, RotateAccessTokenPublic_JoinsTheRotationInFlightAndTellsItsFailure) {
    const Outcome<HttpReply> request = get();
    transport.at(0).reply(401);
    const Outcome<> joined(session.rotateAccessTokenPublic());
    EXPECT_EQ(transport.count(), 2U);
    transport.at(1).reply(201, R"({"accessToken":"a","refreshToken":"b"})");
    const BackendError error = backendErrorOf(joined);
    EXPECT_EQ(error.status, 201);
    EXPECT_EQ(error.code, QStringLiteral("refresh_failed"));
    EXPECT_EQ(error.message, QStringLiteral("Не удалось обновить сессию"));
    EXPECT_EQ(backendErrorOf(request).code, QStringLiteral("session_expired"));
}

TEST_F(AuthSessionRequests, Rotation_NoTokens_FailsWithNotLoggedIn) {
    store.clear();
    EXPECT_EQ(backendErrorOf(Outcome<>(session.rotateAccessTokenPublic())).code,
              QStringLiteral("not_logged_in"));
    store.save(QStringLiteral("a"), QStringLiteral("b"));
    const Outcome<> again(session.rotateAccessTokenPublic()); // the failed one is forgotten
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(AuthSessionRequests, Rotation_ReplyLost_IsRepeatedWithTheSameTokenAndEndsWell) {
    const Outcome<> lost(session.rotateAccessTokenPublic());
    transport.last().fail(QStringLiteral("connection closed"));
    EXPECT_TRUE(lost.failureAs<TransportError>());
    EXPECT_EQ(store.tokens(), (Tokens{QStringLiteral("access-1"), QStringLiteral("refresh-1")}));
    const Outcome<> repeated(session.rotateAccessTokenPublic());
    EXPECT_EQ(transport.last().request.body, R"({"refreshToken":"refresh-1"})");
    replyWithNewTokens();
    EXPECT_TRUE(repeated.succeeded());
    EXPECT_EQ(store.tokens(), (Tokens{QStringLiteral("access-2"), QStringLiteral("refresh-2")}));
}

TEST_F(AuthSessionRequests, Rotation_ReplyAfterSigningOut_DoesNotSignInAgain) {
    const Outcome<> rotation(session.rotateAccessTokenPublic());
    store.clear();
    replyWithNewTokens();
    EXPECT_TRUE(rotation.isDone());
    EXPECT_FALSE(store.isLoggedIn());
}

TEST_F(AuthSessionRequests, Rotation_ReplyAfterSigningInAnew_KeepsTheNewTokens) {
    const Outcome<HttpReply> request = get();
    transport.at(0).reply(401);
    store.save(QStringLiteral("other"), QStringLiteral("other refresh"));
    replyWithNewTokens();
    EXPECT_EQ(transport.last().request.headers.value("Authorization"), "Bearer other");
    EXPECT_EQ(store.tokens()->refreshToken, QStringLiteral("other refresh"));
}

TEST_F(AuthSessionRequests, SessionDestroyed_RequestsAndRotationInFlight_EndWithoutTouchingIt) {
    const Outcome<HttpReply> waiting = get();
    std::vector<Outcome<HttpReply>> rotating{get(), get()};
    const Outcome<> me(session.refreshMe());
    transport.at(1).reply(401);
    transport.at(2).reply(401);
    owned.reset();
    EXPECT_TRUE(waiting.failureAs<TransportError>());
    EXPECT_TRUE(rotating[0].failureAs<TransportError>());
    EXPECT_TRUE(rotating[1].failureAs<TransportError>());
    EXPECT_TRUE(me.succeeded());
    EXPECT_TRUE(transport.at(0).isAborted());
    EXPECT_TRUE(transport.last().isAborted());
    EXPECT_TRUE(store.isLoggedIn());
}
