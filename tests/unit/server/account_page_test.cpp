#include "accounts/local_user.h"
#include "app/server.h"
#include "fake_recogniser.h"
#include "pages/account_page.h"
#include "test_client.h"
#include "test_folder.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class AccountPageTest : public testing::Test {
protected:
    static ServerOptions options(const TestFolder& folder, bool localUser) {
        ServerOptions options;
        options.listen = "127.0.0.1:0";
        options.data = folder.path() / "data";
        options.localUser = localUser;
        return options;
    }

    [[nodiscard]] Reply post(const std::string& body, const TestClient::Headers& headers = {}) const {
        return client.send("POST", "/account", body, headers);
    }
    /// Fills in the form of the page that is asked for by nobody yet.
    [[nodiscard]] Reply enter(const std::string& fields) const {
        return post(client.send("GET", "/account").hiddenFields() + "&" + fields);
    }
    [[nodiscard]] Reply enterAsAnn(const std::string& password = "long+enough") const {
        return enter("action=sign_in&email=ann%40example.org&password=" + password);
    }
    [[nodiscard]] Reply press(const Reply& page, const std::string& fields) const {
        return post(page.hiddenFields() + "&" + fields);
    }
    [[nodiscard]] int meStatus(const Tokens& tokens) const {
        return client.sendAs(tokens, "GET", "/v1/auth/me").status;
    }

    TestFolder folder;
    Server server{options(folder, true), std::make_unique<FakeRecogniser>()};
    TestClient client{server.address()};
};

TEST_F(AccountPageTest, Root_LeadsToTheAccount) {
    const auto reply = client.send("GET", "/");
    EXPECT_EQ(reply.status, 302);
    EXPECT_EQ(reply.headers.at("Location"), "/account");
}

TEST_F(AccountPageTest, Page_AsksWhoItIs_AndIsKeptByNobody) {
    const auto page = client.send("GET", "/account");
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.headers.at("Cache-Control"), "no-store");
    EXPECT_THAT(page.headers.at("Content-Security-Policy"), HasSubstr("frame-ancestors 'none'"));
    EXPECT_THAT(page.body, AllOf(HasSubstr("Продолжить как " + LocalUser::current().name),
                                 HasSubstr("name=\"password\""), Not(HasSubstr("Создать аккаунт"))));
}

TEST_F(AccountPageTest, RightPassword_ShowsTheAccountWithItsSessions) {
    static_cast<void>(client.signUp("ann@example.org"));
    const auto page = enterAsAnn();
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.headers.at("Cache-Control"), "no-store");
    EXPECT_FALSE(page.headers.contains("Set-Cookie"));
    EXPECT_THAT(page.body, AllOf(HasSubstr("ann@example.org"), HasSubstr("Открыто сеансов: 1."),
                                 HasSubstr("Сменить пароль"), Not(HasSubstr("velmora://"))));
}

TEST_F(AccountPageTest, WrongPassword_ShowsTheFormAgain) {
    static_cast<void>(client.signUp("ann@example.org"));
    const auto page = enterAsAnn("not+that+one");
    EXPECT_EQ(page.status, 401);
    EXPECT_THAT(page.body,
                AllOf(HasSubstr("Неверная почта или пароль."), HasSubstr("value=\"ann@example.org\""),
                      Not(HasSubstr("Завершить все сеансы"))));
}

TEST_F(AccountPageTest, Guessing_IsHeldBack_TogetherWithTheSignInPage) {
    static_cast<void>(client.signUp("ann@example.org"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(enterAsAnn("not+that+one").status, 401);
        EXPECT_EQ(client.submitForm("s", "action=sign_in&email=ann@example.org&password=not+that+one").status,
                  401);
    }
    EXPECT_EQ(enterAsAnn("not+that+one").status, 401);
    // From here on each waits for the one before, so of many at once some are told to come back.
    const auto form = client.send("GET", "/account").hiddenFields() +
                      "&action=sign_in&email=ann%40example.org&password=not+that+one";
    const auto request = "POST /account HTTP/1.1\r\nHost: " + server.address() +
                         "\r\nContent-Length: " + std::to_string(form.size()) + "\r\n\r\n" + form;
    Poco::Net::Socket::SocketList waiting;
    for (int i = 0; i < 6; ++i) {
        auto socket = client.connect();
        socket.sendBytes(request.data(), static_cast<int>(request.size()));
        waiting.push_back(socket);
    }
    std::string refusal;
    while (refusal.empty() && !waiting.empty()) {
        auto readable = waiting;
        Poco::Net::Socket::SocketList none;
        ASSERT_GT(Poco::Net::Socket::select(readable, none, none, Poco::Timespan(30, 0)), 0);
        Poco::Net::StreamSocket socket(readable.front());
        std::erase(waiting, readable.front());
        std::string reply(16 * 1024, '\0');
        reply.resize(
            static_cast<std::size_t>(socket.receiveBytes(reply.data(), static_cast<int>(reply.size()))));
        refusal = reply.starts_with("HTTP/1.1 429") ? reply : std::string();
    }
    EXPECT_THAT(refusal, testing::ContainsRegex("Retry-After: [0-9]+"));
}

TEST_F(AccountPageTest, EndSessions_EndsThoseOfThisAccountAlone) {
    const auto phone = client.signUp("ann@example.org");
    const auto other = client.signUp("bob@example.org");
    const auto parameters = callbackParameters(
        client.submitForm("s", "action=sign_in&email=ann@example.org&password=long+enough").body);
    const Tokens desk{parameters.at("token"), parameters.at("refresh")};
    const auto page = enterAsAnn();
    EXPECT_THAT(page.body, HasSubstr("Открыто сеансов: 2."));

    const auto done = press(page, "action=end_sessions");
    EXPECT_EQ(done.status, 200);
    EXPECT_THAT(done.body, AllOf(HasSubstr("Все сеансы завершены."), HasSubstr("Открытых сеансов нет.")));
    EXPECT_EQ(meStatus(phone), 401);
    EXPECT_EQ(meStatus(desk), 401);
    EXPECT_EQ(client.send("POST", "/v1/auth/refresh", R"({"refreshToken":")" + desk.refresh + "\"}").status,
              401);
    EXPECT_EQ(meStatus(other), 200);
}

TEST_F(AccountPageTest, NewPassword_CountsFromNowOn_AndEndsTheSessions) {
    const auto tokens = client.signUp("ann@example.org");
    const auto page = enterAsAnn();
    const auto done = press(page, "action=change_password&password=long+enough&new_password=quite+another");
    EXPECT_EQ(done.status, 200);
    EXPECT_THAT(done.body, HasSubstr("Пароль изменён"));
    EXPECT_EQ(meStatus(tokens), 401);
    EXPECT_EQ(enterAsAnn().status, 401);
    EXPECT_EQ(enterAsAnn("quite+another").status, 200);
    // The page of before is worth nothing any more, the new one goes on.
    EXPECT_EQ(press(page, "action=end_sessions").status, 400);
    EXPECT_EQ(press(done, "action=change_password&password=quite+another&new_password=long+enough").status,
              200);
}

TEST_F(AccountPageTest, ChangeThatCannotBe_IsExplained_AndChangesNothing) {
    const auto tokens = client.signUp("ann@example.org");
    const auto page = enterAsAnn();
    const auto wrong =
        press(page, "action=change_password&password=a+guess+of+it&new_password=quite+another");
    EXPECT_EQ(wrong.status, 401);
    EXPECT_THAT(wrong.body, AllOf(HasSubstr("Текущий пароль введён неверно."), HasSubstr("Сменить пароль")));
    const auto brief = press(page, "action=change_password&password=long+enough&new_password=brief");
    EXPECT_EQ(brief.status, 400);
    EXPECT_THAT(brief.body, HasSubstr("слишком короткий"));
    EXPECT_EQ(press(page, "action=dance").status, 400);
    EXPECT_EQ(meStatus(tokens), 200);
    EXPECT_EQ(enterAsAnn().status, 200);
}

TEST_F(AccountPageTest, LocalUser_GetsInWithOneClick_AndHasNoPasswordToChange) {
    const auto parameters = callbackParameters(client.submitForm("s", "action=local").body);
    const auto page = enter("action=local");
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.body, AllOf(HasSubstr(LocalUser::current().email), HasSubstr("Этот аккаунт без пароля"),
                                 Not(HasSubstr("Сменить пароль"))));
    EXPECT_EQ(press(page, "action=change_password&password=&new_password=quite+another").status, 400);
    EXPECT_EQ(press(page, "action=end_sessions").status, 200);
    EXPECT_EQ(meStatus({parameters.at("token"), {}}), 401);
}

TEST_F(AccountPageTest, FormOfAnotherSite_IsRefused) {
    for (const auto& headers : std::vector<TestClient::Headers>{{{"Origin", "https://evil.example"}},
                                                                {{"Origin", "null"}},
                                                                {{"Sec-Fetch-Site", "cross-site"}}}) {
        const auto reply = post("form_token=x&action=local", headers);
        EXPECT_EQ(reply.status, 403);
        EXPECT_EQ(reply.code(), "cross_site");
    }
}

TEST_F(AccountPageTest, TokensMadeForSomethingElse_OpenNothing) {
    const auto ann = client.signUp("ann@example.org");
    static_cast<void>(client.signUp("bob@example.org"));
    const auto id =
        client.sendAs(ann, "GET", "/v1/auth/me").json()->getObject("user")->getValue<std::string>("id");
    const auto bobs =
        enter("action=sign_in&email=bob%40example.org&password=long+enough").hiddenField("form_token");
    // A sign-in page makes tokens for whatever its address says.
    const auto signIn = client.send("GET", "/auth?source=app&state=entry").hiddenField("form_token");
    const auto entry = client.send("GET", "/account").hiddenField("form_token");
    for (const auto& token : {std::string(), std::string("1.x"), bobs, signIn, entry}) {
        const auto reply = post("account=" + id + "&form_token=" + token + "&action=end_sessions");
        EXPECT_EQ(reply.status, 400);
        EXPECT_THAT(reply.body, HasSubstr("Страница устарела."));
    }
    EXPECT_EQ(post("form_token=" + signIn + "&action=local").status, 400);
    EXPECT_EQ(meStatus(ann), 200);
}

TEST_F(AccountPageTest, ServerWithoutLocalUser_LetsNobodyInByClick) {
    const TestFolder other;
    const Server second(options(other, false), std::make_unique<FakeRecogniser>());
    const TestClient stranger(second.address());
    const auto form = stranger.send("GET", "/account");
    EXPECT_THAT(form.body, Not(HasSubstr("Продолжить как")));
    EXPECT_EQ(stranger.send("POST", "/account", form.hiddenFields() + "&action=local").status, 400);
}

TEST_F(AccountPageTest, PageOfAnAccountWithoutPassword_IsWorthNothingToOthers) {
    const auto parameters = callbackParameters(client.submitForm("s", "action=local").body);
    const Tokens tokens{parameters.at("token"), {}};
    const auto page = enter("action=local");
    // The same data, so the same key and the same account; but this one takes nobody for its user.
    const Server second(options(folder, false), std::make_unique<FakeRecogniser>());
    const TestClient stranger(second.address());
    EXPECT_EQ(stranger.send("POST", "/account", page.hiddenFields() + "&action=end_sessions").status, 400);
    EXPECT_EQ(meStatus(tokens), 200);
    EXPECT_EQ(press(page, "action=end_sessions").status, 200);
    EXPECT_EQ(meStatus(tokens), 401);
}

TEST_F(AccountPageTest, WhateverStandsInIt_IsEscaped) {
    const std::string attack = R"("><script>)";
    EXPECT_THAT((AccountPage{.email = attack,
                             .accountId = attack,
                             .formToken = attack,
                             .sessions = 1,
                             .hasPassword = true,
                             .notice = attack,
                             .problem = attack})
                    .render()
                    .html,
                Not(HasSubstr("<script")));
    EXPECT_THAT(
        (AccountEntryPage{.formToken = attack, .email = attack, .problem = attack, .localName = attack})
            .render()
            .html,
        Not(HasSubstr("<script")));
}

} // namespace
} // namespace velmora::server
