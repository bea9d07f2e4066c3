#include "attacked_server.h"

namespace velmora::server {
namespace {

/// Clients that dawdle, one test for each phase of a request.
class SlowClients : public AttackedServer {
protected:
    /// The account may dictate once at a time, so another dictation shows whether the first one has ended.
    [[nodiscard]] bool dictationHasEnded() {
        return comesTrue([this] { return client->dictate(tokens, sound()).status != 429; });
    }
};

TEST_F(SlowClients, SayingNothing_EndsWithTheHeadersTime) {
    options.http.header = 300ms;
    start();
    expectRefusal(connect().reply(), 408, "timeout");
}

TEST_F(SlowClients, HeaderByteByByte_EndsWithTheHeadersTime) {
    options.http.header = 500ms;
    start();
    auto slow = connect();
    EXPECT_TRUE(slow.dripUntilReply("GET / HTTP/1.1\r\nX: " + std::string(10'000, 'x'), 5ms));
    expectRefusal(slow.reply(), 408, "timeout");
}

TEST_F(SlowClients, BodyByteByByte_IsBelowTheLeastRate) {
    options.http.patience = 500ms;
    options.http.leastRate = 1'000'000;
    start();
    auto slow = connect();
    slow.send(headOf("POST", "/auth", 15'000));
    EXPECT_TRUE(slow.dripUntilReply(std::string(15'000, 'x'), 5ms));
    expectRefusal(slow.reply(), 408, "timeout");
}

TEST_F(SlowClients, BodyThatStalls_Is408HoweverFastItBegan) {
    options.http.patience = 500ms;
    start();
    auto slow = connect();
    slow.send(headOf("POST", "/auth", 15'000) + std::string(10'000, 'x'));
    expectRefusal(slow.reply(), 408, "timeout");
}

TEST_F(SlowClients, UploadByteByByte_IsBelowTheLeastRate) {
    options.http.patience = 500ms;
    options.http.leastRate = 1'000'000;
    start();
    auto slow = connect();
    slow.send(uploadHead(1'000'000));
    EXPECT_TRUE(slow.dripUntilReply(std::string(15'000, 'x'), 5ms));
    expectRefusal(slow.reply(), 408, "timeout");
}

TEST_F(SlowClients, UploadThatStalls_Is408HoweverFastItBegan) {
    options.http.patience = 500ms;
    start();
    auto slow = connect();
    slow.send(uploadHead(1'000'000) + std::string(100'000, 'x'));
    expectRefusal(slow.reply(), 408, "timeout");
}

TEST_F(SlowClients, UploadThatTakesTooLongInAll_Is408) {
    options.limits.uploadTime = 500ms;
    start();
    auto slow = connect();
    slow.send(uploadHead(1'000'000));
    EXPECT_TRUE(slow.dripUntilReply(std::string(15'000, 'x'), 5ms));
    expectRefusal(slow.reply(), 408, "timeout");
}

TEST_F(SlowClients, UploadAboveTheLeastRate_MayTakeLongerThanThePatience) {
    options.http.patience = 2s;
    options.http.leastRate = 10;
    auto recogniser = std::make_unique<FakeRecogniser>();
    recogniser->phrases = {"all there"};
    start(std::move(recogniser));
    auto slow = connect();
    const auto request = client->dictationRequest(tokens, sound());
    const auto begin = std::chrono::steady_clock::now();
    const auto piece = request.size() / 30;
    for (std::size_t at = 0; at < request.size(); at += piece) {
        ASSERT_TRUE(slow.send(request.substr(at, piece)));
        EXPECT_FALSE(at + piece < request.size() && slow.hasReply(100ms));
    }
    EXPECT_GT(std::chrono::steady_clock::now() - begin, options.http.patience);
    EXPECT_EQ(slow.reply().status, 200);
}

TEST_F(SlowClients, ReplyThatIsNotRead_IsGivenUp) {
    options.http.patience = 300ms;
    start();
    RawClient deaf(server->address(), "127.0.0.1", RawClient::Reading::Reluctant);
    // The page says again what was typed, which is longer than the connection can hold.
    const auto token = client->send("GET", "/auth?source=app&state=s").hiddenField("form_token");
    const auto form = "state=s&form_token=" + token +
                      "&action=create&password=long+enough&email=" + std::string(15'000, '"');
    deaf.send(headOf("POST", "/auth", form.size(), "Content-Type: application/x-www-form-urlencoded\r\n") +
              form);
    ASSERT_TRUE(deaf.hasReply(patience));
    EXPECT_TRUE(deaf.isAbandoned());
}

TEST_F(SlowClients, ReplyWithoutAnEndFromThePeer_IsGivenUpAfterTheDrainTime) {
    options.http.drain = 300ms;
    start();
    auto staying = connect();
    staying.send(headOf("GET", "/v1/auth/me", 0));
    EXPECT_EQ(staying.reply().status, 401);
    EXPECT_TRUE(staying.isAbandoned());
}

TEST_F(SlowClients, EventStreamThatIsNotRead_EndsTheDictation) {
    options.http.write = 300ms;
    options.limits.perAccount = 1;
    auto recogniser = std::make_unique<FakeRecogniser>();
    // More than the system keeps for a connection.
    recogniser->phrases = {std::string(4 * 1024 * 1024, 'x')};
    start(std::move(recogniser));
    RawClient deaf(server->address(), "127.0.0.1", RawClient::Reading::Reluctant);
    deaf.send(client->dictationRequest(tokens, sound()));
    ASSERT_TRUE(deaf.hasReply(patience));
    EXPECT_TRUE(dictationHasEnded());
}

TEST_F(SlowClients, DictationThatTakesTooLong_IsCut) {
    options.limits.duration = 500ms;
    auto& recogniser = startStuck();
    auto waiting = connect();
    waiting.send(client->dictationRequest(tokens, sound(500ms)));
    ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 1));
    EXPECT_TRUE(recogniser.waitUntil(recogniser.stopped, 1));
}

TEST_F(SlowClients, SilentDictation_GivesSignsOfLife) {
    options.limits.silence = 20ms;
    startStuck();
    auto waiting = connect();
    waiting.send(client->dictationRequest(tokens, sound()));
    // Comments, each a block of its own, and nothing else behind the first event.
    EXPECT_THAT(waiting.readUntil("\n\n"), testing::HasSubstr("text/event-stream"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_THAT(waiting.readUntil("\n\n"), testing::EndsWith(": \n\n"));
    }
}

} // namespace
} // namespace velmora::server
