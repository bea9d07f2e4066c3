// The clients of the backend over real HTTP: the bytes on the wire and what comes of the server's.

#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "backend/backend_dictate_client.h"
#include "backend/qt_http_transport.h"
#include "foundation/qt_main_loop.h"
#include "foundation/user_defaults.h"
#include "foundation/worker.h"
#include "support/loopback_http_server.h"
#include "support/outcome.h"
#include "support/wait.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <future>
#include <thread>

using namespace velmora;
using namespace velmora::test;

namespace {

using NextEvent = Outcome<std::optional<DictateEvent>>;

const QByteArray eventStreamHead = "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n\r\n";

struct BackendOverHttp : testing::Test {
    BackendOverHttp() {
        store.save(QStringLiteral("access-1"), QStringLiteral("refresh-1"));
        QFile out(audioFile);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(audio);
    }

    /// Accepts the token access-2 alone, and gives it for the refresh token.
    void acceptOnlyTheNewToken() {
        server.onRequest = [](LoopbackConnection& connection, const QByteArray& request) {
            if (request.startsWith("POST /v1/auth/refresh "))
                connection.reply("200 OK", R"({"accessToken":"access-2","refreshToken":"refresh-2"})");
            else if (headerOf(request, "Authorization") == "Bearer access-2")
                connection.reply("200 OK", "fine");
            else
                connection.reply("401 Unauthorized", "{}", "WWW-Authenticate: Bearer\r\n");
        };
    }
    [[nodiscard]] LoopbackConnection* requestCame() {
        return waitUntil([&] { return !server.requests().empty(); }) ? &server.connection(0) : nullptr;
    }
    static std::optional<DictateEvent> take(AsyncStream<DictateEvent>& stream) {
        const NextEvent next(stream.next());
        EXPECT_TRUE(waitUntil([&] { return next.isDone(); }));
        return next.value();
    }

    QTemporaryDir root;
    const QByteArray audio = QByteArray(100'000, '\x7f') + QByteArray("\0\r\n\r\n--\xff", 8);
    const QString audioFile = root.filePath(QStringLiteral("rec.m4a"));
    LoopbackHttpServer server;
    QtMainLoop loop;
    UserDefaults defaults{root.path() + QStringLiteral("/defaults.json")};
    AuthStore store{root.path(), defaults};
    QtHttpTransport sessionTransport{loop};
    QtHttpTransport dictateTransport{loop};
    AuthSession session{sessionTransport, store, loop, server.url()};
    ThreadWorker reader;
    BackendDictateClient client{dictateTransport, session, loop, reader};
};

} // namespace

TEST_F(BackendOverHttp, Logout_IsAnAuthorisedPostWithoutABody) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) {
        connection.reply("204 No Content");
    };
    const Outcome<> out(session.logout());
    ASSERT_TRUE(waitUntil([&] { return out.isDone(); }));
    const QByteArray request = server.requests().at(0);
    EXPECT_TRUE(request.startsWith("POST /v1/auth/logout HTTP/1.1\r\n")) << request.constData();
    EXPECT_EQ(headerOf(request, "Authorization"), "Bearer access-1");
    EXPECT_EQ(headerOf(request, "User-Agent"), "Velmora-macOS/0.1");
    EXPECT_EQ(headerOf(request, "Content-Type"), "");
    EXPECT_EQ(headerOf(request, "Content-Length"), "0");
    EXPECT_EQ(bodyOf(request), "");
}

TEST_F(BackendOverHttp, ThreeConcurrent401s_OneRotationAndThreeRepeatedRequests) {
    acceptOnlyTheNewToken();
    std::vector<Outcome<HttpReply>> outcomes;
    for (int i = 0; i < 3; ++i)
        outcomes.emplace_back(session.rawAuthedRequest(QStringLiteral("/v1/x"), "POST", "b", "text/plain"));
    ASSERT_TRUE(waitUntil([&] { return std::ranges::all_of(outcomes, [](auto& o) { return o.isDone(); }); }));
    for (const auto& outcome : outcomes)
        EXPECT_EQ(outcome.value().body, "fine");
    const std::vector<QByteArray> requests = server.requests();
    EXPECT_EQ(requests.size(), 7U);
    EXPECT_EQ(std::ranges::count_if(
                  requests, [](const QByteArray& r) { return r.startsWith("POST /v1/auth/refresh "); }),
              1);
}

TEST_F(BackendOverHttp, Rotation_IsAJsonPostWithoutAuthorization) {
    acceptOnlyTheNewToken();
    const Outcome<> rotation(session.rotateAccessTokenPublic());
    ASSERT_TRUE(waitUntil([&] { return rotation.isDone(); }));
    const QByteArray request = server.requests().at(0);
    EXPECT_TRUE(request.startsWith("POST /v1/auth/refresh HTTP/1.1\r\n"));
    EXPECT_EQ(headerOf(request, "Authorization"), "");
    EXPECT_EQ(headerOf(request, "Content-Type"), "application/json");
    EXPECT_EQ(bodyOf(request), R"({"refreshToken":"refresh-1"})");
    EXPECT_EQ(store.tokens()->accessToken, QStringLiteral("access-2"));
}

TEST_F(BackendOverHttp, Dictate_SendsTheMultipartBodyByteForByte) {
    const auto stream = client.dictate(audioFile);
    ASSERT_TRUE(requestCame());
    const QByteArray request = server.requests().at(0);
    EXPECT_TRUE(request.startsWith("POST /v1/dictate HTTP/1.1\r\n"));
    EXPECT_EQ(headerOf(request, "Accept"), "text/event-stream");
    EXPECT_EQ(headerOf(request, "Accept-Encoding"), "identity");
    EXPECT_EQ(headerOf(request, "User-Agent"), "Velmora-macOS/0.1");
    const QByteArray type = headerOf(request, "Content-Type");
    const QByteArray boundary = type.mid(QByteArray("multipart/form-data; boundary=").size());
    EXPECT_EQ(boundary.size(), qsizetype(sizeof "velmora-" - 1 + 36));
    EXPECT_EQ(bodyOf(request),
              "--" + boundary +
                  "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"rec.m4a\"\r\n"
                  "Content-Type: audio/m4a\r\n\r\n" +
                  audio + "\r\n--" + boundary + "--\r\n");
    EXPECT_EQ(headerOf(request, "Content-Length"), QByteArray::number(bodyOf(request).size()));
}

TEST_F(BackendOverHttp, Dictate_EventsArriveWhileTheReplyIsOpen_AlsoWhenACharacterIsSplit) {
    auto stream = client.dictate(audioFile);
    LoopbackConnection* connection = requestCame();
    ASSERT_TRUE(connection);
    connection->write(eventStreamHead + "event: status\ndata: {\"stage\":\"transcribing\"}\n\n");
    EXPECT_EQ(take(stream), DictateEvent(dictate_event::Status{QStringLiteral("transcribing")}));

    const QByteArray block =
        "event: chunk\ndata: {\"delta\":\"я\"}\n\nevent: done\ndata: {\"text\":\"я\",\"wordCount\":1}\n\n";
    const qsizetype middle = block.indexOf("\xd1") + 1;
    connection->write("event: chunk\ndata: {\"delta\":\"раз\"}\n\n" + block.left(middle));
    EXPECT_EQ(take(stream), DictateEvent(dictate_event::Chunk{QStringLiteral("раз")}));
    connection->write(block.mid(middle));
    EXPECT_EQ(take(stream), DictateEvent(dictate_event::Chunk{QStringLiteral("я")}));
    EXPECT_EQ(take(stream), DictateEvent(dictate_event::Done{QStringLiteral("я"), 1}));
    EXPECT_EQ(take(stream), std::nullopt);
    EXPECT_TRUE(waitUntil([&] { return !connection->isOpen(); })); // the rest is not waited for
}

TEST_F(BackendOverHttp, Dictate_ServerClosesEarly_EndsWithoutDone) {
    auto stream = client.dictate(audioFile);
    LoopbackConnection* connection = requestCame();
    ASSERT_TRUE(connection);
    connection->write(eventStreamHead + "event: chunk\ndata: {\"delta\":\"раз\"}\n\n");
    connection->close();
    EXPECT_EQ(take(stream), DictateEvent(dictate_event::Chunk{QStringLiteral("раз")}));
    EXPECT_EQ(take(stream), std::nullopt);
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(BackendOverHttp, Dictate_ServerClosesWithoutAReply_FailsAndIsNotSentAgain) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray&) { connection.close(); };
    auto stream = client.dictate(audioFile);
    EXPECT_THROW((void)take(stream), TransportError);
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(BackendOverHttp, Dictate_401_RotatesAndSendsTheAudioOnceMore) {
    server.onRequest = [](LoopbackConnection& connection, const QByteArray& request) {
        if (request.startsWith("POST /v1/auth/refresh "))
            connection.reply("200 OK", R"({"accessToken":"access-2","refreshToken":"refresh-2"})");
        else if (headerOf(request, "Authorization") == "Bearer access-2")
            connection.reply("200 OK", "event: done\ndata: {\"text\":\"т\",\"wordCount\":1}\n\n");
        else
            connection.reply("401 Unauthorized", "{}");
    };
    auto stream = client.dictate(audioFile);
    EXPECT_EQ(take(stream), DictateEvent(dictate_event::Done{QStringLiteral("т"), 1}));
    EXPECT_EQ(server.requests().size(), 3U);
}

TEST_F(BackendOverHttp, Dictate_ErrorBodyInPieces_GivesItsMessage) {
    auto stream = client.dictate(audioFile);
    LoopbackConnection* connection = requestCame();
    ASSERT_TRUE(connection);
    const QByteArray body = R"({"code":"limit","message":"Лимит исчерпан"})";
    connection->write("HTTP/1.1 402 Payment Required\r\nContent-Length: " + QByteArray::number(body.size()) +
                      "\r\n\r\n" + body.left(30));
    connection->write(body.mid(30));
    try {
        (void)take(stream);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.localizedDescription(), QStringLiteral("Лимит исчерпан"));
    }
}

TEST_F(BackendOverHttp, Dictate_ConsumerDropsTheStream_ConnectionCloses) {
    LoopbackConnection* connection = nullptr;
    {
        auto stream = client.dictate(audioFile);
        connection = requestCame();
        ASSERT_TRUE(connection);
        connection->write(eventStreamHead + "event: chunk\ndata: {\"delta\":\"раз\"}\n\n");
        EXPECT_TRUE(take(stream));
        EXPECT_TRUE(connection->isOpen());
    }
    EXPECT_TRUE(waitUntil([&] { return !connection->isOpen(); }));
}

// A pipe that nobody writes to yet holds up whoever opens it, as a disk that hangs does.
TEST_F(BackendOverHttp, Dictate_FileThatHangs_DoesNotHoldUpTheCaller) {
    const QString pipe = root.filePath(QStringLiteral("hanging.m4a"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    std::promise<void> returned;
    bool wasReturned = false;
    std::jthread disk([&, future = returned.get_future()] {
        wasReturned = future.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
        QFile writer(pipe);
        EXPECT_TRUE(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    });
    auto stream = client.dictate(pipe);
    returned.set_value();
    EXPECT_TRUE(requestCame());
    disk.join();
    EXPECT_TRUE(wasReturned);
}
