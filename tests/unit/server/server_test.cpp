#include "accounts/local_user.h"
#include "app/server.h"
#include "fake_recogniser.h"
#include "test_client.h"
#include "test_folder.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ServerTest : public testing::Test {
protected:
    static ServerOptions options(const TestFolder& folder) {
        ServerOptions options;
        options.listen = "127.0.0.1:0";
        options.data = folder.path() / "data";
        options.localUser = true;
        return options;
    }

    TestFolder folder;
    Server server{options(folder), std::make_unique<FakeRecogniser>()};
    TestClient client{server.address()};
};

TEST_F(ServerTest, SignUpByForm_LeadsBackIntoTheApplication) {
    const auto reply =
        client.submitForm("a%26b%3Cc", "action=create&email=ann%40example.org&password=long+enough");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.headers.at("Cache-Control"), "no-store");
    EXPECT_THAT(reply.body, HasSubstr("http-equiv=\"refresh\" content=\"0;url=velmora://auth?token="));
    const auto parameters = callbackParameters(reply.body);
    EXPECT_EQ(parameters.at("state"), "a&b<c");
    const auto me = client.sendAs({parameters.at("token"), {}}, "GET", "/v1/auth/me");
    EXPECT_EQ(me.status, 200);
    EXPECT_EQ(me.json()->getObject("user")->getValue<std::string>("email"), "ann@example.org");
}

TEST_F(ServerTest, SignInByForm_WorksWithTheRightPasswordOnly) {
    static_cast<void>(client.signUp("ann@example.org"));
    const auto wrong = client.submitForm("s", "action=sign_in&email=ann@example.org&password=not+that+one");
    EXPECT_EQ(wrong.status, 401);
    EXPECT_THAT(wrong.body, HasSubstr("Неверная почта или пароль."));
    EXPECT_THAT(wrong.body, HasSubstr("value=\"ann@example.org\""));
    EXPECT_THAT(wrong.body, Not(HasSubstr("velmora://")));
    const auto right = client.submitForm("s", "action=sign_in&email=ann@example.org&password=long+enough");
    EXPECT_EQ(right.status, 200);
    EXPECT_THAT(callbackParameters(right.body), testing::SizeIs(3));
}

TEST_F(ServerTest, LocalUser_GetsInWithOneClick) {
    const auto page = client.send("GET", "/auth?source=app&state=s");
    EXPECT_THAT(page.body, HasSubstr("Продолжить как " + LocalUser::current().name));
    const auto parameters = callbackParameters(client.submitForm("s", "action=local").body);
    const auto me = client.sendAs({parameters.at("token"), {}}, "GET", "/v1/auth/me");
    EXPECT_TRUE(me.json()->getObject("user")->getValue<bool>("isAdmin"));
}

TEST_F(ServerTest, Page_NeedsSourceAndState) {
    for (const std::string path :
         {"/auth", "/auth?source=app", "/auth?source=web&state=s", "/auth?source=app&state="}) {
        const auto reply = client.send("GET", path);
        EXPECT_EQ(reply.status, 400) << path;
        EXPECT_THAT(reply.body, HasSubstr("Начните из приложения"));
        EXPECT_THAT(reply.body, Not(HasSubstr("<form")));
    }
}

TEST_F(ServerTest, State_IsOfABoundedLength_OnThePageAndInItsForm) {
    const auto page = [&](std::size_t length) {
        return client.send("GET", "/auth?source=app&state=" + std::string(length, 's'));
    };
    EXPECT_EQ(page(256).status, 200);
    EXPECT_EQ(page(257).status, 400);
    const auto submit = [&](std::size_t length) {
        return client.send("POST", "/auth",
                           "state=" + std::string(length, 's') +
                               "&form_token=x&action=create&email=ann@example.org&password=long+enough");
    };
    EXPECT_THAT(submit(256).body, HasSubstr("Страница устарела"));
    for (const std::size_t length : {0, 257, 10'000}) {
        const auto reply = submit(length);
        EXPECT_EQ(reply.status, 400);
        EXPECT_THAT(reply.body, AllOf(HasSubstr("Начните из приложения"), Not(HasSubstr("form_token"))));
    }
}

TEST_F(ServerTest, FormOfAnotherSite_IsRefused) {
    const std::string form = "state=s&form_token=x&action=local";
    const auto send = [&](const TestClient::Headers& headers) {
        return client.send("POST", "/auth", form, headers);
    };
    EXPECT_EQ(send({{"Origin", "https://evil.example"}}).code(), "cross_site");
    EXPECT_EQ(send({{"Origin", "null"}}).code(), "cross_site");
    EXPECT_EQ(send({{"Sec-Fetch-Site", "cross-site"}}).code(), "cross_site");
    // Of the right site, but without a token that the server made.
    const auto own = send({{"Origin", "http://" + server.address()}, {"Sec-Fetch-Site", "same-origin"}});
    EXPECT_EQ(own.status, 400);
    EXPECT_THAT(own.body, HasSubstr("Страница устарела"));
}

TEST_F(ServerTest, FormWithoutItsToken_LetsNobodyIn) {
    const auto own = client.send("GET", "/auth?source=app&state=mine").hiddenField("form_token");
    for (const auto& token : {std::string(), std::string("1.x"), own}) {
        for (const std::string action : {"local", "create&email=ann@example.org&password=long+enough"}) {
            const auto reply =
                client.send("POST", "/auth", "state=another&form_token=" + token + "&action=" + action);
            EXPECT_EQ(reply.status, 400);
            EXPECT_THAT(reply.body, AllOf(HasSubstr("Страница устарела"), Not(HasSubstr("velmora://"))));
        }
    }
}

TEST_F(ServerTest, Form_IsOfABoundedSize) {
    const auto page = client.send("GET", "/auth?source=app&state=s");
    const auto submit = [&](std::size_t filling) {
        return client
            .send("POST", "/auth", page.hiddenFields() + "&action=none&filling=" + std::string(filling, 'x'))
            .status;
    };
    EXPECT_EQ(submit(15'000), 400) << "it is read, and there is no such action";
    EXPECT_EQ(submit(17'000), 413);
}

TEST_F(ServerTest, ForeignHostName_IsRefused) {
    const auto reply = client.send("GET", "/auth?source=app&state=s", {}, {{"Host", "rebound.example"}});
    EXPECT_EQ(reply.status, 403);
    EXPECT_EQ(reply.code(), "bad_host");
}

TEST_F(ServerTest, Me_HasTheRecordOfANewAccount) {
    const auto tokens = client.signUp("ann@example.org");
    const auto reply = client.sendAs(tokens, "GET", "/v1/auth/me");
    const auto user = reply.json()->getObject("user");
    EXPECT_FALSE(user->getValue<std::string>("id").empty());
    EXPECT_FALSE(user->getValue<bool>("isAdmin"));
    EXPECT_FALSE(user->has("emailVerifiedAt"));
    EXPECT_THAT(user->getValue<std::string>("createdAt"), testing::MatchesRegex("....-..-..T..:..:..Z"));
    const auto preferences = reply.json()->getObject("preferences");
    EXPECT_EQ(preferences->getValue<std::string>("transcribeLanguage"), "ru");
    EXPECT_TRUE(preferences->getValue<bool>("cleanupEnabled"));
    EXPECT_FALSE(preferences->getValue<bool>("devModeEnabled"));
    EXPECT_FALSE(preferences->has("meetingStorageMode"));
}

TEST_F(ServerTest, WithoutToken_OrWithABadOne_Is401) {
    for (const std::string path : {"/v1/auth/me", "/v1/me/preferences"}) {
        const auto reply = client.send("GET", path);
        EXPECT_EQ(reply.status, 401);
        EXPECT_EQ(reply.code(), "not_logged_in");
        EXPECT_EQ(client.sendAs({"a.b.c", {}}, "GET", path).code(), "invalid_token");
        EXPECT_EQ(client.send("GET", path, {}, {{"Authorization", "Basic x"}}).code(), "not_logged_in");
    }
}

TEST_F(ServerTest, Refresh_Rotates_MayBeRepeated_AndAReuseRevokesTheFamily) {
    const auto first = client.signUp("ann@example.org");
    const auto refresh = [&](const std::string& token) {
        return client.send("POST", "/v1/auth/refresh", R"({"refreshToken":")" + token + "\"}");
    };
    const auto tokensIn = [](const Reply& reply) {
        return Tokens{reply.json()->getValue<std::string>("accessToken"),
                      reply.json()->getValue<std::string>("refreshToken")};
    };
    const auto reply = refresh(first.refresh);
    ASSERT_EQ(reply.status, 200);
    const auto second = tokensIn(reply);
    EXPECT_EQ(client.sendAs(second, "GET", "/v1/auth/me").status, 200);
    // As a client does that has never seen the reply.
    const auto repeated = refresh(first.refresh);
    EXPECT_EQ(repeated.status, 200);
    EXPECT_EQ(repeated.body, reply.body);

    const auto third = tokensIn(refresh(second.refresh));
    const auto reused = refresh(first.refresh);
    EXPECT_EQ(reused.status, 401);
    EXPECT_EQ(reused.code(), "invalid_refresh_token");
    EXPECT_EQ(refresh(third.refresh).status, 401);
    EXPECT_EQ(client.sendAs(third, "GET", "/v1/auth/me").status, 401);
}

TEST_F(ServerTest, Refresh_OfNonsense_Is400) {
    for (const std::string body :
         {"", "no json", "[]", "{}", R"({"refreshToken":7})", R"({"refreshToken":null})"}) {
        EXPECT_EQ(client.send("POST", "/v1/auth/refresh", body).status, 400) << body;
    }
    std::string deep(10'000, '[');
    EXPECT_EQ(client.send("POST", "/v1/auth/refresh", deep).code(), "bad_json");
}

TEST_F(ServerTest, Logout_EndsThatSessionOnly) {
    const auto phone = client.signUp("ann@example.org");
    const auto parameters = callbackParameters(
        client.submitForm("s", "action=sign_in&email=ann@example.org&password=long+enough").body);
    const Tokens desk{parameters.at("token"), parameters.at("refresh")};
    EXPECT_EQ(client.sendAs(phone, "POST", "/v1/auth/logout").status, 204);
    EXPECT_EQ(client.sendAs(phone, "GET", "/v1/auth/me").status, 401);
    EXPECT_EQ(client.send("POST", "/v1/auth/refresh", R"({"refreshToken":")" + phone.refresh + "\"}").status,
              401);
    EXPECT_EQ(client.sendAs(desk, "GET", "/v1/auth/me").status, 200);
}

TEST_F(ServerTest, Preferences_ArePatchedAndKept) {
    const auto tokens = client.signUp("ann@example.org");
    const auto changed = client.sendAs(tokens, "PATCH", "/v1/me/preferences",
                                       R"({"transcribeLanguage":"English","meetingStorageMode":"BOTH"})");
    EXPECT_EQ(changed.status, 200);
    EXPECT_EQ(changed.json()->getValue<std::string>("transcribeLanguage"), "English");
    EXPECT_TRUE(changed.json()->getValue<bool>("cleanupEnabled"));
    const auto read = client.sendAs(tokens, "GET", "/v1/me/preferences");
    EXPECT_EQ(read.body, changed.body);
}

TEST_F(ServerTest, BadPreferences_Are400AndNameTheField) {
    const auto tokens = client.signUp("ann@example.org");
    const auto reply = client.sendAs(tokens, "PATCH", "/v1/me/preferences", R"({"cleanupEnabled":"yes"})");
    EXPECT_EQ(reply.status, 400);
    EXPECT_EQ(reply.json()->getObject("details")->getValue<std::string>("field"), "cleanupEnabled");
    EXPECT_EQ(client.sendAs(tokens, "PATCH", "/v1/me/preferences", "{").code(), "bad_json");
    EXPECT_EQ(client.sendAs(tokens, "PATCH", "/v1/me/preferences", std::string(100'000, ' ')).status, 413);
}

TEST_F(ServerTest, News_IsTheChangeLog) {
    const auto page = client.send("GET", "/news");
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, AllOf(HasSubstr("<h1>Что нового</h1>"), HasSubstr("<h2>0.1.0"), HasSubstr("<li>"),
                                 HasSubstr("<code>velmora-server</code>"), Not(HasSubstr("`")),
                                 Not(HasSubstr("Changes"))));
}

TEST_F(ServerTest, License_IsTheWholeLicense) {
    const auto page = client.send("GET", "/legal/license");
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, AllOf(HasSubstr("<h1>Лицензия</h1>"), HasSubstr("MIT License"),
                                 HasSubstr("WITHOUT WARRANTY OF ANY KIND"), HasSubstr("DEALINGS IN THE")));
}

TEST_F(ServerTest, UnknownPath_Is404_WrongMethodIs405) {
    const auto unknown = client.send("GET", "/v1/nothing");
    EXPECT_EQ(unknown.status, 404);
    EXPECT_EQ(unknown.code(), "not_found");
    EXPECT_FALSE(unknown.json()->getValue<std::string>("message").empty());
    const auto wrong = client.send("DELETE", "/v1/me/preferences");
    EXPECT_EQ(wrong.status, 405);
    EXPECT_EQ(wrong.headers.at("Allow"), "GET, PATCH");
}

TEST_F(ServerTest, GarbageOnTheWire_HarmsNobody) {
    for (const std::string bytes :
         {"\r\n\r\n", "GET\r\n\r\n", "GET / HTTP/1.1\r\nHost\r\n\r\n",
          "POST /auth HTTP/1.1\r\nContent-Length: -5\r\n\r\n",
          "POST /auth HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: many\r\n\r\n",
          "\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", "GET /%zz HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n",
          "GET http://[ HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n"}) {
        auto socket = client.connect();
        socket.sendBytes(bytes.data(), static_cast<int>(bytes.size()));
        socket.shutdownSend();
        char rest[1024];
        while (socket.receiveBytes(rest, sizeof rest) > 0) {
        }
    }
    EXPECT_EQ(client.send("GET", "/v1/nothing").status, 404);
}

TEST_F(ServerTest, TwoServersOnOnePort_AreNotPossible) {
    const TestFolder other;
    auto same = options(other);
    same.listen = server.address();
    try {
        const Server second(same, std::make_unique<FakeRecogniser>());
        ADD_FAILURE();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("cannot listen on " + server.address()));
    }
}

TEST_F(ServerTest, LanguageTheRecogniserLacks_IsNoStart) {
    const TestFolder other;
    auto french = options(other);
    french.language = "fr";
    EXPECT_THROW(Server(french, std::make_unique<FakeRecogniser>()), std::runtime_error);
}

} // namespace
} // namespace velmora::server
