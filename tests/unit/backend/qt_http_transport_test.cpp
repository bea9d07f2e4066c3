#include "backend/qt_http_transport.h"
#include "foundation/qt_main_loop.h"
#include "support/hand_loop.h"
#include "support/loopback_http_server.h"
#include "support/outcome.h"
#include "support/wait.h"

#include <gmock/gmock.h>
using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr auto timedOut = "Сервер не ответил вовремя";
constexpr auto closed = "Сервер закрыл соединение";
constexpr auto cancelled = "Operation canceled";

struct QtHttpTransportTest : testing::Test {
    LoopbackHttpServer server;
    QtMainLoop loop;
    std::optional<QtHttpTransport> transport{std::in_place, loop};
    std::stop_source stop;

    HttpRequest request(const QByteArray& method, const QByteArray& body = {},
                        const QString& path = QStringLiteral("/x")) const {
        HttpRequest made;
        made.url = server.url(path);
        made.method = method;
        made.body = body;
        return made;
    }
    Outcome<HttpReply> send(const HttpRequest& made) {
        return Outcome<HttpReply>(transport->send(made, stop.get_token()));
    }
    Outcome<OpenHttpReply> open(const HttpRequest& made) {
        return Outcome<OpenHttpReply>(transport->open(made, stop.get_token()));
    }
    /// Sends and waits for the end.
    Outcome<HttpReply> exchange(const HttpRequest& made) {
        Outcome<HttpReply> outcome = send(made);
        EXPECT_TRUE(waitUntil([&] { return outcome.isDone(); }));
        return outcome;
    }
    [[nodiscard]] bool requestCame(std::size_t count = 1) {
        return waitUntil([&] { return server.requests().size() >= count; });
    }
    void replyToAll(const QByteArray& status, const QByteArray& body = {}, const QByteArray& headers = {}) {
        server.onRequest = [=](LoopbackConnection& connection, const QByteArray&) {
            connection.reply(status, body, headers);
        };
    }
};

const std::vector<QByteArray> writingMethods{"POST", "PATCH", "PUT", "DELETE"};

} // namespace

TEST_F(QtHttpTransportTest, Get_SendsHeadersAsGivenAndReturnsStatusHeadersAndBody) {
    replyToAll("200 OK", "тело", "X-One: 1\r\n");
    HttpRequest made = request("GET", {}, QStringLiteral("/a%20b?c=%D1%8F?d"));
    made.headers.set("Authorization", "Bearer t");
    made.headers.set("User-Agent", "Tester/1");
    const Outcome<HttpReply> outcome = exchange(made);
    EXPECT_EQ(outcome.value().status, 200);
    EXPECT_EQ(outcome.value().body, "тело");
    EXPECT_EQ(outcome.value().headers.value("x-one"), "1");
    const QByteArray sent = server.requests().front();
    EXPECT_TRUE(sent.startsWith("GET /a%20b?c=%D1%8F?d HTTP/1.1\r\n")) << sent.constData();
    EXPECT_EQ(headerOf(sent, "Authorization"), "Bearer t");
    EXPECT_EQ(headerOf(sent, "User-Agent"), "Tester/1");
}

TEST_F(QtHttpTransportTest, WritingMethods_SendTheBodyWithItsLengthAndNoContentTypeOfTheirOwn) {
    replyToAll("200 OK");
    QByteArray big;
    for (int i = 0; big.size() < 300'000; ++i)
        big += QByteArray::number(i) + '\0';
    std::size_t count = 0;
    for (const QByteArray& method : writingMethods) {
        for (const QByteArray& body : {QByteArray(), QByteArray("small"), big}) {
            EXPECT_EQ(exchange(request(method, body, QStringLiteral("/x?q=1"))).value().status, 200);
            ASSERT_EQ(server.requests().size(), ++count);
            const QByteArray sent = server.requests().back();
            EXPECT_TRUE(sent.startsWith(method + " /x?q=1 HTTP/1.1\r\n")) << sent.left(100).constData();
            EXPECT_EQ(bodyOf(sent), body);
            EXPECT_EQ(headerOf(sent, "Content-Length"), QByteArray::number(body.size()));
            EXPECT_EQ(headerOf(sent, "Content-Type"), "");
        }
    }
    EXPECT_EQ(server.connectionCount(), 1U); // kept alive
}

TEST_F(QtHttpTransportTest, EveryStatus_IsAReplyWithItsBody) {
    for (const char* status :
         {"200 OK",   "201 Created", "204 No Content", "300 Many", "304 Not Modified", "400 Bad",
          "401 No",   "403 No",      "404 No",         "405 No",   "407 Proxy",        "409 Conflict",
          "410 Gone", "418 Teapot",  "422 No",         "429 Slow", "500 Oh",           "501 No",
          "502 Bad",  "503 Later",   "599 Odd"}) {
        for (const QByteArray& method : {QByteArray("GET"), QByteArray("POST")}) {
            const qint64 code = QByteArray(status).left(3).toLongLong();
            const QByteArray body = code == 204 || code == 304 ? "" : R"({"message":"x"})";
            replyToAll(status, body);
            const Outcome<HttpReply> outcome = exchange(request(method, "b"));
            ASSERT_TRUE(outcome.succeeded()) << status << ": " << qPrintable(outcome.failure());
            EXPECT_EQ(outcome.value().status, code);
            EXPECT_EQ(outcome.value().body, body) << status;
        }
    }
}

TEST_F(QtHttpTransportTest, InterimReply_IsSkipped) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 100 Continue\r\n\r\n");
        connection.reply("200 OK", "after");
    };
    const Outcome<HttpReply> outcome = exchange(request("POST", "b"));
    EXPECT_EQ(outcome.value().status, 200);
    EXPECT_EQ(outcome.value().body, "after");
}

TEST_F(QtHttpTransportTest, Unauthorised_WithAChallenge_IsNotRepeatedAndBringsItsBody) {
    for (const char* challenge : {"Basic realm=\"x\"", "Digest realm=\"x\", nonce=\"n\", qop=\"auth\"",
                                  "Negotiate", "NTLM", "Bearer"}) {
        for (const QByteArray& method : {QByteArray("GET"), QByteArray("POST")}) {
            const std::size_t before = server.requests().size();
            replyToAll("401 Unauthorized", "denied", QByteArray("WWW-Authenticate: ") + challenge + "\r\n");
            const Outcome<HttpReply> outcome = exchange(request(method, "b"));
            ASSERT_TRUE(outcome.succeeded()) << challenge << ": " << qPrintable(outcome.failure());
            EXPECT_EQ(outcome.value().status, 401);
            EXPECT_EQ(outcome.value().body, "denied") << challenge;
            EXPECT_EQ(server.requests().size(), before + 1) << challenge;
        }
    }
}

TEST_F(QtHttpTransportTest, KeptAliveConnectionClosesWithoutReply_NoWritingRequestLeavesTwice) {
    for (const QByteArray& method : writingMethods) {
        for (const QByteArray& body : {QByteArray("precious"), QByteArray()}) {
            const std::size_t before = server.requests().size();
            replyToAll("200 OK");
            ASSERT_TRUE(exchange(request("GET")).succeeded());
            server.onRequest = [](LoopbackConnection& connection, const QByteArray&) { connection.close(); };
            const std::size_t connections = server.connectionCount();
            const Outcome<HttpReply> outcome = exchange(request(method, body));
            EXPECT_EQ(outcome.failure(), QString::fromUtf8(closed)) << method.constData();
            // The next request would come behind a repeated one.
            replyToAll("200 OK");
            ASSERT_TRUE(exchange(request("GET")).succeeded());
            EXPECT_EQ(server.requests().size(), before + 3) << method.constData();
            EXPECT_EQ(server.connectionCount(), connections + 1) << "it went over the kept-alive connection";
        }
    }
}

TEST_F(QtHttpTransportTest, KeptAliveConnectionClosesWhileIdle_NextRequestGetsAFreshOne) {
    replyToAll("200 OK");
    for (const QByteArray& method : writingMethods) {
        ASSERT_TRUE(exchange(request(method, "b")).succeeded());
        LoopbackConnection& idle = server.connection(server.connectionCount() - 1);
        idle.finish();
        ASSERT_TRUE(waitUntil([&] { return !idle.isOpen(); }));
    }
    EXPECT_EQ(server.connectionCount(), writingMethods.size());
}

TEST_F(QtHttpTransportTest, FreshConnectionClosesWithoutReply_NoWritingRequestLeavesTwice) {
    for (const QByteArray& method : writingMethods) {
        for (const QByteArray& body : {QByteArray("precious"), QByteArray()}) {
            transport.emplace(loop);
            const std::size_t before = server.requests().size();
            server.onRequest = [](LoopbackConnection& connection, const QByteArray&) { connection.close(); };
            EXPECT_EQ(exchange(request(method, body)).failure(), QString::fromUtf8(closed))
                << method.constData();
            replyToAll("200 OK");
            ASSERT_TRUE(exchange(request("GET")).succeeded());
            EXPECT_EQ(server.requests().size(), before + 2) << method.constData();
        }
    }
}

TEST_F(QtHttpTransportTest, ConnectionClosesInTheMiddleOfTheHead_NoWritingRequestLeavesTwice) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nConte");
        connection.close();
    };
    const Outcome<HttpReply> outcome = exchange(request("POST", "precious"));
    EXPECT_TRUE(outcome.failureAs<TransportError>());
    replyToAll("200 OK");
    ASSERT_TRUE(exchange(request("GET")).succeeded());
    EXPECT_EQ(server.requests().size(), 2U);
}

TEST_F(QtHttpTransportTest, ConnectionClosesDuringALargeUpload_FailsOnce) {
    const Outcome<HttpReply> outcome = send(request("POST", QByteArray(8 << 20, 'x')));
    ASSERT_TRUE(waitUntil(
        [&] { return server.connectionCount() == 1 && !server.connection(0).received().isEmpty(); }));
    server.connection(0).close();
    ASSERT_TRUE(waitUntil([&] { return outcome.isDone(); }));
    EXPECT_TRUE(outcome.failureAs<TransportError>());
    replyToAll("200 OK");
    ASSERT_TRUE(exchange(request("GET")).succeeded());
    EXPECT_TRUE(server.connection(0).received().startsWith("POST "));
    for (std::size_t i = 1; i < server.connectionCount(); ++i)
        EXPECT_FALSE(server.connection(i).received().contains("POST "));
    EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST_F(QtHttpTransportTest, Redirect_OfAGetWithinTheOrigin_IsFollowed) {
    server.onRequest = [this](LoopbackConnection& connection, const QByteArray& sent) {
        if (sent.startsWith("GET /x "))
            connection.reply("302 Found", {}, "Location: /y?z=1\r\n");
        else if (sent.startsWith("GET /y?z=1 "))
            connection.reply("307 Moved", {},
                             "Location: " + server.url(QStringLiteral("/end")).toEncoded() + "\r\n");
        else
            connection.reply("200 OK", "there");
    };
    HttpRequest made = request("GET");
    made.headers.set("Authorization", "Bearer t");
    EXPECT_EQ(exchange(made).value().body, "there");
    EXPECT_EQ(headerOf(server.requests().back(), "Authorization"), "Bearer t");
}

TEST_F(QtHttpTransportTest, Redirect_OfOtherMethodsOrToAnotherOrigin_ComesBackAsItIs) {
    LoopbackHttpServer other;
    for (const QByteArray& method : writingMethods) {
        replyToAll("307 Temporary", "moved", "Location: /y\r\n");
        const Outcome<HttpReply> outcome = exchange(request(method, "b"));
        EXPECT_EQ(outcome.value().status, 307);
        EXPECT_EQ(outcome.value().body, "moved");
    }
    replyToAll("302 Found", "away", "Location: " + other.url(QStringLiteral("/y")).toEncoded() + "\r\n");
    EXPECT_EQ(exchange(request("GET")).value().status, 302);
    EXPECT_EQ(other.connectionCount(), 0U);
    EXPECT_EQ(server.requests().size(), writingMethods.size() + 1);
}

TEST_F(QtHttpTransportTest, Redirect_WithoutEnd_ComesBackInTheEnd) {
    replyToAll("302 Found", {}, "Location: /x\r\n");
    EXPECT_EQ(exchange(request("GET")).value().status, 302);
    EXPECT_EQ(server.requests().size(), 11U);
}

TEST_F(QtHttpTransportTest, Cookies_AreNotSentBack) {
    replyToAll("200 OK", {}, "Set-Cookie: a=b\r\n");
    EXPECT_TRUE(exchange(request("GET")).succeeded());
    EXPECT_TRUE(exchange(request("GET")).succeeded());
    EXPECT_EQ(headerOf(server.requests().back(), "Cookie"), "");
}

TEST_F(QtHttpTransportTest, ProxyInTheEnvironment_IsNotUsedTowardsThisMachine) {
    LoopbackHttpServer proxy;
    const auto oldProxy = qEnvironmentVariable("http_proxy");
    qputenv("http_proxy", proxy.url().toEncoded());
    replyToAll("200 OK");
    EXPECT_TRUE(exchange(request("GET")).succeeded());
    HttpRequest byName = request("GET");
    byName.url.setHost(QStringLiteral("localhost"));
    EXPECT_TRUE(exchange(byName).succeeded());
    EXPECT_EQ(proxy.connectionCount(), 0U);
    oldProxy.isNull() ? qunsetenv("http_proxy") : qputenv("http_proxy", oldProxy.toUtf8());
}

TEST_F(QtHttpTransportTest, NobodyListens_FailsWithTheDescription) {
    QTcpServer gone;
    ASSERT_TRUE(gone.listen(QHostAddress::LocalHost));
    HttpRequest made = request("POST", "b");
    made.url.setPort(gone.serverPort());
    gone.close();
    EXPECT_EQ(exchange(made).failure(), QStringLiteral("Сервер не отвечает"));
}

TEST_F(QtHttpTransportTest, UnknownScheme_Fails) {
    HttpRequest made = request("GET");
    made.url = QUrl(QStringLiteral("gopher://127.0.0.1/x"));
    EXPECT_TRUE(exchange(made).failureAs<TransportError>());
}

TEST_F(QtHttpTransportTest, ServerThatDoesNotSpeakHTTP_Fails) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("220 mail ready\r\n\r\n");
        connection.close();
    };
    EXPECT_TRUE(exchange(request("POST", "b")).failureAs<TransportError>());
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(QtHttpTransportTest, WhatIsNotHTTPButReplies_HasStatusZero) {
    HttpRequest made = request("GET");
    made.url = QUrl(QStringLiteral("data:text/plain,hello"));
    const Outcome<HttpReply> outcome = exchange(made);
    EXPECT_EQ(outcome.value().status, 0);
    EXPECT_EQ(outcome.value().body, "hello");
}

TEST_F(QtHttpTransportTest, ServerNeverAnswers_FailsWhenNothingMovedForTheTime) {
    HttpRequest made = request("POST", "b");
    made.inactivityTimeout = 50ms;
    EXPECT_EQ(exchange(made).failure(), QString::fromUtf8(timedOut));
    EXPECT_TRUE(waitUntil([&] { return !server.connection(0).isOpen(); }));
    EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST_F(QtHttpTransportTest, ServerStopsInTheBody_FailsWhenNothingMovedForTheTime) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
    };
    HttpRequest made = request("GET");
    made.inactivityTimeout = 50ms;
    EXPECT_EQ(exchange(made).failure(), QString::fromUtf8(timedOut));
}

TEST_F(QtHttpTransportTest, TotalTimeout_RunsFromTheStartWhateverArrives) {
    HandLoop clock;
    QtHttpTransport timed(clock);
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\n\r\none");
    };
    HttpRequest made = request("POST", "b");
    made.totalTimeout = 180s;
    const Outcome<OpenHttpReply> reply(timed.open(made, stop.get_token()));
    ASSERT_TRUE(waitUntil([&] { return reply.isDone(); }));
    Outcome<std::optional<QByteArray>> piece(reply.value().body.next());
    ASSERT_TRUE(waitUntil([&] { return piece.isDone(); }));
    EXPECT_EQ(piece.value(), "one");
    Outcome<std::optional<QByteArray>> none(reply.value().body.next());
    clock.advance(179s);
    EXPECT_FALSE(none.isDone());
    clock.advance(1s);
    EXPECT_EQ(none.failure(), QString::fromUtf8(timedOut));
    EXPECT_TRUE(waitUntil([&] { return !server.connection(0).isOpen(); }));
}

TEST_F(QtHttpTransportTest, TotalTimeout_BeforeTheHead_FailsTheOpening) {
    HandLoop clock;
    QtHttpTransport timed(clock);
    HttpRequest made = request("POST", "b");
    made.totalTimeout = 180s;
    const Outcome<HttpReply> reply(timed.send(made, stop.get_token()));
    ASSERT_TRUE(requestCame());
    clock.advance(180s);
    EXPECT_EQ(reply.failure(), QString::fromUtf8(timedOut));
}

TEST_F(QtHttpTransportTest, Finished_LeavesNoTimerBehind) {
    HandLoop clock;
    QtHttpTransport timed(clock);
    replyToAll("200 OK", "x");
    HttpRequest made = request("POST", "b");
    made.totalTimeout = 180s;
    const Outcome<HttpReply> reply(timed.send(made, stop.get_token()));
    ASSERT_TRUE(waitUntil([&] { return reply.isDone(); }));
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(QtHttpTransportTest, BodyShorterThanAnnounced_PiecesThenAFailure) {
    for (const QByteArray& head :
         {QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"),
          QByteArray("HTTP/1.1 500 Oh\r\nContent-Length: 100\r\n\r\nhalf"),
          QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nhalf\r\n")}) {
        server.onRequest = [=](LoopbackConnection& connection, const QByteArray&) {
            connection.write(head);
            connection.close();
        };
        const Outcome<OpenHttpReply> reply = open(request("POST", "b"));
        ASSERT_TRUE(waitUntil([&] { return reply.isDone(); }));
        const Outcome<std::optional<QByteArray>> piece(reply.value().body.next());
        ASSERT_TRUE(waitUntil([&] { return piece.isDone(); }));
        EXPECT_EQ(piece.value(), "half");
        const Outcome<std::optional<QByteArray>> end(reply.value().body.next());
        ASSERT_TRUE(waitUntil([&] { return end.isDone(); }));
        EXPECT_TRUE(end.failureAs<TransportError>()) << head.constData();
    }
}

TEST_F(QtHttpTransportTest, BodyUpToTheEndOfTheConnection_IsWhole) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\n\r\nall of it");
        connection.close();
    };
    EXPECT_EQ(exchange(request("GET")).value().body, "all of it");
}

TEST_F(QtHttpTransportTest, RepliesDuringTheUploadAndClosesAfterIt_ReplyIsWholeIfNoMoreWasAnnounced) {
    for (const auto& [headers, whole] :
         {std::pair("\r\n", true), std::pair("Content-Length: 3\r\n\r\n", true),
          std::pair("Content-Length: 9\r\n\r\n", false),
          std::pair("Transfer-Encoding: chunked\r\n\r\n3\r\n", false)}) {
        transport.emplace(loop); // a connection of its own
        const std::size_t index = server.connectionCount();
        const Outcome<OpenHttpReply> reply = open(request("POST", QByteArray(1 << 20, 'x')));
        ASSERT_TRUE(waitUntil([&] {
            return server.connectionCount() > index && !server.connection(index).received().isEmpty();
        }));
        LoopbackConnection& connection = server.connection(index);
        ASSERT_THAT(connection.requests(), IsEmpty());
        connection.write(QByteArray("HTTP/1.1 200 OK\r\n") + headers + "all");
        ASSERT_TRUE(requestCame(index + 1));
        ASSERT_TRUE(waitUntil([&] { return reply.isDone(); }));
        const Outcome<std::optional<QByteArray>> piece(reply.value().body.next());
        ASSERT_TRUE(waitUntil([&] { return piece.isDone(); }));
        EXPECT_EQ(piece.value(), "all");
        connection.close();
        const Outcome<std::optional<QByteArray>> end(reply.value().body.next());
        ASSERT_TRUE(waitUntil([&] { return end.isDone(); }));
        EXPECT_EQ(end.succeeded(), whole) << headers;
    }
}

TEST_F(QtHttpTransportTest, Open_GivesHeadBeforeTheBodyAndPiecesAsTheyCome) {
    const Outcome<OpenHttpReply> reply = open(request("POST", "b"));
    ASSERT_TRUE(requestCame());
    LoopbackConnection& connection = server.connection(0);
    connection.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nX-A: b\r\n\r\n");
    ASSERT_TRUE(waitUntil([&] { return reply.isDone(); }));
    EXPECT_EQ(reply.value().status, 200);
    EXPECT_EQ(reply.value().headers.value("X-A"), "b");
    for (const QByteArray& part : {QByteArray("one"), QByteArray("two"), QByteArray("three")}) {
        const Outcome<std::optional<QByteArray>> piece(reply.value().body.next());
        EXPECT_FALSE(piece.isDone());
        connection.write(QByteArray::number(part.size(), 16) + "\r\n" + part + "\r\n");
        ASSERT_TRUE(waitUntil([&] { return piece.isDone(); }));
        EXPECT_EQ(piece.value(), part);
    }
    connection.write("0\r\n\r\n");
    const Outcome<std::optional<QByteArray>> end(reply.value().body.next());
    ASSERT_TRUE(waitUntil([&] { return end.isDone(); }));
    EXPECT_EQ(end.value(), std::nullopt);
}

TEST_F(QtHttpTransportTest, BodyDropped_ClosesTheConnection) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\n\r\none");
    };
    {
        const Outcome<OpenHttpReply> reply = open(request("POST", "b"));
        ASSERT_TRUE(waitUntil([&] { return reply.isDone(); }));
        EXPECT_TRUE(server.connection(0).isOpen());
    }
    EXPECT_TRUE(waitUntil([&] { return !server.connection(0).isOpen(); }));
}

TEST_F(QtHttpTransportTest, StopBeforeTheHead_FailsAtOnceAndClosesTheConnection) {
    const Outcome<HttpReply> outcome = send(request("POST", "b"));
    ASSERT_TRUE(requestCame());
    stop.request_stop();
    EXPECT_EQ(outcome.failure(), QLatin1String(cancelled));
    EXPECT_TRUE(waitUntil([&] { return !server.connection(0).isOpen(); }));
}

TEST_F(QtHttpTransportTest, StopDuringTheBody_FailsAtOnceAndClosesTheConnection) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\n\r\none");
    };
    const Outcome<OpenHttpReply> reply = open(request("POST", "b"));
    ASSERT_TRUE(waitUntil([&] { return reply.isDone(); }));
    stop.request_stop();
    const Outcome<std::optional<QByteArray>> first(reply.value().body.next());
    const Outcome<std::optional<QByteArray>> second(reply.value().body.next());
    EXPECT_TRUE(first.failureAs<TransportError>() || second.failureAs<TransportError>());
    EXPECT_TRUE(waitUntil([&] { return !server.connection(0).isOpen(); }));
}

TEST_F(QtHttpTransportTest, StopRequestedBefore_SendsNothing) {
    stop.request_stop();
    EXPECT_EQ(send(request("POST", "b")).failure(), QLatin1String(cancelled));
    replyToAll("200 OK");
    stop = std::stop_source();
    EXPECT_TRUE(exchange(request("GET")).succeeded());
    EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST_F(QtHttpTransportTest, TransportDestroyed_WhatIsInFlightFails) {
    const Outcome<HttpReply> waiting = send(request("POST", "b"));
    ASSERT_TRUE(requestCame());
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.write("HTTP/1.1 200 OK\r\n\r\none");
    };
    const Outcome<HttpReply> reading = send(request("POST", "c"));
    ASSERT_TRUE(requestCame(2));
    transport.reset();
    EXPECT_EQ(waiting.failure(), QLatin1String(cancelled));
    EXPECT_EQ(reading.failure(), QLatin1String(cancelled));
}
