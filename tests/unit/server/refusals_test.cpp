#include "attacked_server.h"

namespace velmora::server {
namespace {

using testing::HasSubstr;

/// Refusals that come at once, and requests that deserve one.
class Refusals : public AttackedServer {
protected:
    [[nodiscard]] Reply replyTo(const std::string& bytes) const {
        auto raw = connect();
        raw.send(bytes);
        return raw.reply();
    }

    [[nodiscard]] Reply patch(const std::string& body) const {
        return client->sendAs(tokens, "PATCH", "/v1/me/preferences", body);
    }

    [[nodiscard]] static std::string nested(int depth) {
        std::string text = "1";
        for (int i = 0; i < depth; ++i) {
            text = R"({"devModeEnabled":)" + text + "}";
        }
        return text;
    }
};

TEST_F(Refusals, WhatTheHeadDecides_IsRepliedBeforeTheBodyComes) {
    options.limits.bytes = 1024 * 1024;
    start();
    constexpr std::size_t length = 900'000;
    expectRefusal(replyTo(headOf("POST", "/v1/dictate", length)), 401, "not_logged_in");
    expectRefusal(replyTo(signedHeadOf("POST", "/v1/dictate", 2 * options.limits.bytes)), 413, "too_large");
    expectRefusal(replyTo(headOf("PATCH", "/v1/me/preferences", 100)), 401, "not_logged_in");
    expectRefusal(replyTo(signedHeadOf("PATCH", "/v1/me/preferences", length)), 413, "too_large");
    expectRefusal(replyTo(headOf("POST", "/auth", length)), 413, "too_large");
    expectRefusal(replyTo(headOf("POST", "/v1/nothing", length)), 404, "not_found");
    expectRefusal(replyTo("POST /auth HTTP/1.1\r\nHost: rebound.example\r\nContent-Length: 9\r\n\r\n"), 403,
                  "bad_host");
}

TEST_F(Refusals, TooManyDictations_IsRepliedBeforeTheBodyComes) {
    options.limits.perAccount = 1;
    auto& recogniser = startStuck();
    auto first = connect();
    first.send(client->dictationRequest(tokens, sound()));
    ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 1));
    expectRefusal(replyTo(uploadHead(1'000'000)), 429, "too_many_dictations");
}

TEST_F(Refusals, BodyBehindARefusal_IsTakenToItsEnd) {
    start();
    auto raw = connect();
    raw.send(headOf("POST", "/v1/dictate", 16 * 1024 * 1024));
    ASSERT_TRUE(raw.hasReply(patience));
    // Far more than the system would buffer; a reset would lose the reply that was not read yet.
    for (int i = 0; i < 16; ++i) {
        EXPECT_TRUE(raw.send(std::string(1024 * 1024, 'x')));
    }
    EXPECT_EQ(raw.reply().status, 401);
}

TEST_F(Refusals, PeerThatWaitsToBeToldToGoOn_IsToldWhenItShould) {
    start();
    const std::string expect = "Expect: 100-continue\r\n";
    EXPECT_EQ(replyTo(headOf("POST", "/v1/dictate", 1'000'000, expect)).status, 401);
    auto upload = connect();
    upload.send(signedHeadOf("POST", "/v1/dictate", 10,
                             "Content-Type: multipart/form-data; boundary=b\r\n" + expect));
    EXPECT_EQ(upload.readUntil("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
    auto small = connect();
    small.send(signedHeadOf("PATCH", "/v1/me/preferences", 2, expect));
    EXPECT_EQ(small.readUntil("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
    small.send("{}");
    EXPECT_EQ(small.reply().status, 200);
}

TEST_F(Refusals, LengthsThatAreNone_Are400) {
    start();
    for (const std::string length :
         {"-1", "+5", "many", "5x", "0x10", "1.5", "5, 5", "9223372036854775808", "18446744073709551616",
          "99999999999999999999999999", "", "5\r\nContent-Length: 5", "5\r\ncontent-length: 6"}) {
        for (const std::string path : {"/auth", "/v1/dictate", "/v1/auth/refresh"}) {
            const auto reply =
                replyTo("POST " + path + " HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + length +
                        "\r\n\r\nhello");
            expectRefusal(reply, 400, "bad_request");
        }
    }
    expectRefusal(
        replyTo("POST /auth HTTP/1.1\r\nHost: localhost\r\nContent-Length: 9223372036854775807\r\n\r\n"), 413,
        "too_large");
}

TEST_F(Refusals, BodiesWithoutALength_Are411) {
    start();
    for (const std::string path : {"/auth", "/v1/dictate", "/v1/auth/refresh"}) {
        const auto reply = replyTo(
            "POST " + path + " HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n");
        expectRefusal(reply, 411, "length_required");
    }
}

TEST_F(Refusals, HeadsThatAreNone_Are400) {
    start();
    std::string manyFields;
    for (int i = 0; i < 101; ++i) {
        manyFields += "X: x\r\n";
    }
    const auto longName = "x" + padded("", 300);
    const auto longValue = "x" + padded("", 9000) + "x";
    for (const std::string& fields : {longName + ": x\r\n", "X: " + longValue + "\r\n", manyFields}) {
        EXPECT_EQ(replyTo("GET /account HTTP/1.1\r\nHost: localhost\r\n" + fields + "\r\n").status, 400);
    }
    for (const std::string bytes : {"\r\n\r\n", "GET\r\n\r\n"}) {
        EXPECT_EQ(replyTo(bytes).status, 400) << bytes;
    }
}

TEST_F(Refusals, HeadTooLarge_Is431) {
    options.http.headerSize = 2048;
    start();
    const auto headOfSize = [](std::size_t size) {
        const std::string end = "\r\n\r\n";
        return padded("GET /v1/nothing HTTP/1.1\r\nHost: localhost\r\nX:", size - end.size()) + "x" + end;
    };
    EXPECT_EQ(replyTo(headOfSize(2047)).status, 404);
    expectRefusal(replyTo(headOfSize(2048)), 431, "header_too_large");
    // It doesn't take the end of the head to see that.
    expectRefusal(replyTo(headOfSize(4096).substr(0, 3000)), 431, "header_too_large");
}

TEST_F(Refusals, FormOfTooManyFields_Is400) {
    start();
    std::string form = "state=s";
    for (int i = 0; i < 1000; ++i) {
        form += "&f" + std::to_string(i) + "=1";
    }
    for (const std::string path : {"/auth", "/account"}) {
        expectRefusal(
            client->send("POST", path, form, {{"Content-Type", "application/x-www-form-urlencoded"}}), 400,
            "bad_request");
    }
}

TEST_F(Refusals, FormTooLarge_Is413) {
    start();
    EXPECT_EQ(client->send("POST", "/auth", std::string(16 * 1024, 'x')).status, 400);
    expectRefusal(client->send("POST", "/auth", std::string(16 * 1024 + 1, 'x')), 413, "too_large");
}

TEST_F(Refusals, JsonTooLarge_Is413) {
    options.http.bodySize = 1024 * 1024;
    start();
    const auto body = [](std::size_t size) { return padded("{}", size); };
    EXPECT_EQ(patch(body(64 * 1024)).status, 200);
    expectRefusal(patch(body(64 * 1024 + 1)), 413, "too_large");
}

TEST_F(Refusals, GatheredBodyTooLarge_Is413) {
    options.http.bodySize = 1024;
    start();
    const auto body = [](std::size_t size) { return padded("{}", size); };
    EXPECT_EQ(patch(body(1024)).status, 200);
    expectRefusal(patch(body(1025)), 413, "too_large");
}

TEST_F(Refusals, JsonTooDeep_IsNoJson) {
    start();
    EXPECT_EQ(patch(nested(16)).code(), "invalid_preferences");
    EXPECT_EQ(patch(nested(17)).code(), "bad_json");
}

TEST_F(Refusals, Replies_TellBrowsersWhatNotToDo) {
    start();
    for (const std::string path : {"/auth?source=app&state=s", "/account", "/news"}) {
        const auto page = client->send("GET", path);
        EXPECT_EQ(page.headers.at("X-Frame-Options"), "DENY");
        EXPECT_EQ(page.headers.at("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(page.headers.at("Referrer-Policy"), "same-origin");
        EXPECT_EQ(page.headers.at("Cache-Control"), "no-store");
        const auto policy = page.headers.at("Content-Security-Policy");
        EXPECT_THAT(policy, HasSubstr("default-src 'none'"));
        EXPECT_THAT(policy, HasSubstr("frame-ancestors 'none'"));
        EXPECT_THAT(policy, testing::Not(HasSubstr("unsafe")));
    }
    const auto error = client->send("GET", "/v1/auth/me");
    EXPECT_EQ(error.headers.at("X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(error.headers.at("Cache-Control"), "no-store");
    EXPECT_EQ(client->sendAs(tokens, "GET", "/v1/auth/me").headers.at("Cache-Control"), "no-store");
}

} // namespace
} // namespace velmora::server
