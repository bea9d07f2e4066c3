#include "auth_fixture.h"
#include "backend/backend_dictate_client.h"
#include "backend/dictate_client_error.h"
#include "support/inline_worker.h"

#include <QRegularExpression>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

const QByteArray doneBlock = "event: done\ndata: {\"text\":\"раз два\",\"wordCount\":2}\n\n";
const DictateEvent done = dictate_event::Done{QStringLiteral("раз два"), 2};

DictateEvent chunk(const QString& delta) {
    return dictate_event::Chunk{delta};
}

/// Takes events one after the other until the stream ends.
class Consumer {
public:
    explicit Consumer(AsyncStream<DictateEvent> stream) { consume(m_state, std::move(stream)); }

    [[nodiscard]] const std::vector<DictateEvent>& events() const { return m_state->events; }
    [[nodiscard]] bool ended() const { return m_state->ended; }
    [[nodiscard]] QString failure() const {
        return m_state->failure ? describe(m_state->failure) : QString();
    }
    template<typename E>
    [[nodiscard]] bool failedWith() const {
        try {
            if (m_state->failure)
                std::rethrow_exception(m_state->failure);
        } catch (const E&) {
            return true;
        } catch (...) {
            return false;
        }
        return false;
    }

private:
    struct State {
        std::vector<DictateEvent> events;
        bool ended = false;
        std::exception_ptr failure;
    };

    static Task<> consume(std::shared_ptr<State> state, AsyncStream<DictateEvent> stream) {
        try {
            while (std::optional<DictateEvent> event = co_await stream.next())
                state->events.push_back(*std::move(event));
        } catch (...) {
            state->failure = std::current_exception();
        }
        state->ended = true;
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

struct BackendDictateClientTest : AuthFixture {
    BackendDictateClientTest() {
        QFile out(audioFile);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(audio);
    }

    /// With the file read already.
    AsyncStream<DictateEvent> start(const QString& file,
                                    const QString& mimeType = QStringLiteral("audio/m4a")) {
        auto stream = client->dictate(file, mimeType);
        loop.runPosted();
        return stream;
    }
    Consumer dictate() { return Consumer(start(audioFile)); }

    const QByteArray audio = QByteArray("m4a \0\r\n--\xff", 11);
    const QString audioFile = root.filePath(QStringLiteral("запись 1.m4a"));
    InlineWorker reader;
    std::optional<BackendDictateClient> client{std::in_place, transport, session, loop, reader};
};

} // namespace

TEST_F(BackendDictateClientTest, Request_HasTheHeadersAndTimeouts) {
    const Consumer consumer = dictate();
    ASSERT_EQ(transport.count(), 1U); // on its way before anybody awaits
    const HttpRequest& request = transport.last().request;
    EXPECT_EQ(request.url, QUrl(QStringLiteral("https://api.example.org/v1/dictate")));
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.headers.value("Authorization"), "Bearer access-1");
    EXPECT_EQ(request.headers.value("User-Agent"), "Velmora-macOS/0.1");
    EXPECT_EQ(request.headers.value("Accept"), "text/event-stream");
    EXPECT_EQ(request.inactivityTimeout, std::chrono::seconds(60));
    EXPECT_EQ(request.totalTimeout, std::chrono::seconds(180));
}

TEST_F(BackendDictateClientTest, Request_BodyIsOnePartByteForByte) {
    const Consumer consumer = dictate();
    const HttpRequest& request = transport.last().request;
    static const QRegularExpression form(QStringLiteral(
        R"(\Amultipart/form-data; boundary=(velmora-[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12})\z)"));
    const auto match = form.match(QString::fromLatin1(request.headers.value("Content-Type")));
    ASSERT_TRUE(match.hasMatch()) << request.headers.value("Content-Type").constData();
    const QByteArray boundary = match.captured(1).toLatin1();
    EXPECT_EQ(request.body, "--" + boundary +
                                "\r\n"
                                "Content-Disposition: form-data; name=\"file\"; filename=\"запись 1.m4a\"\r\n"
                                "Content-Type: audio/m4a\r\n"
                                "\r\n" +
                                audio + "\r\n--" + boundary + "--\r\n");
}

TEST_F(BackendDictateClientTest, Request_CarriesTheMimeTypeGivenAndABoundaryOfItsOwn) {
    const Consumer one = dictate();
    const Consumer two(start(audioFile, QStringLiteral("audio/wav")));
    EXPECT_TRUE(transport.last().request.body.contains("\r\nContent-Type: audio/wav\r\n\r\n"));
    EXPECT_NE(transport.at(0).request.headers.value("Content-Type"),
              transport.at(1).request.headers.value("Content-Type"));
}

TEST_F(BackendDictateClientTest, Events_ReachTheConsumerWithThePieceThatCompletesThem) {
    const Consumer consumer = dictate();
    FakeExchange& exchange = transport.last();
    exchange.begin(200);
    exchange.piece(
        "event: status\ndata: {\"stage\":\"transcribing\"}\n\nevent: chunk\ndata: {\"delta\":\"раз\"}\n");
    EXPECT_THAT(consumer.events(),
                ElementsAre(DictateEvent(dictate_event::Status{QStringLiteral("transcribing")})));
    exchange.piece("\n");
    EXPECT_EQ(consumer.events().size(), 2U);
    EXPECT_EQ(consumer.events().back(), chunk(QStringLiteral("раз")));
    EXPECT_FALSE(consumer.ended());
    exchange.piece(doneBlock);
    EXPECT_EQ(consumer.events().back(), done);
    EXPECT_TRUE(consumer.ended());
    EXPECT_EQ(consumer.failure(), QString());
}

TEST_F(BackendDictateClientTest, AfterDone_NothingIsReadAndTheRequestEnds) {
    const Consumer consumer = dictate();
    transport.last().begin(200);
    transport.last().piece(doneBlock + "event: chunk\ndata: {\"delta\":\"late\"}\n\n" + doneBlock);
    EXPECT_THAT(consumer.events(), ElementsAre(done));
    EXPECT_TRUE(consumer.ended());
    EXPECT_TRUE(transport.last().isAborted());
}

TEST_F(BackendDictateClientTest, ServersErrorEvent_IsDeliveredThenTheStreamEndsNormally) {
    const Consumer consumer = dictate();
    transport.last().begin(200);
    transport.last().piece("event: error\ndata: {}\n\n" + doneBlock);
    EXPECT_THAT(consumer.events(), ElementsAre(DictateEvent(dictate_event::Error{
                                       QStringLiteral("unknown"), QStringLiteral("Ошибка сервера")})));
    EXPECT_TRUE(consumer.ended());
    EXPECT_EQ(consumer.failure(), QString());
}

TEST_F(BackendDictateClientTest, ReplyEndsRightAfterABlockWithoutABlankLine_YieldsItsEvent) {
    const Consumer consumer = dictate();
    transport.last().reply(200, doneBlock.trimmed());
    EXPECT_THAT(consumer.events(), ElementsAre(done));
    EXPECT_TRUE(consumer.ended());
}

TEST_F(BackendDictateClientTest, ReplyEndsEarly_EndsNormallyWithoutDone) {
    const Consumer consumer = dictate();
    transport.last().reply(200, "event: chunk\ndata: {\"delta\":\"раз\"}\n\nevent: do");
    EXPECT_THAT(consumer.events(), ElementsAre(chunk(QStringLiteral("раз"))));
    EXPECT_TRUE(consumer.ended());
    EXPECT_EQ(consumer.failure(), QString());
}

TEST_F(BackendDictateClientTest, UndecodableEvent_IsSkippedAndTheStreamGoesOn) {
    const Consumer consumer = dictate();
    transport.last().reply(200, "event: status\ndata: 7\n\ndata: {}\n\n: ping\n\n" + doneBlock);
    EXPECT_THAT(consumer.events(), ElementsAre(done));
}

TEST_F(BackendDictateClientTest, TwoDataLines_AreJoinedByALineFeed) {
    const Consumer consumer = dictate();
    transport.last().reply(200, "event: chunk\ndata: {\"delta\":\ndata: \"x\"}\n\n");
    EXPECT_THAT(consumer.events(), ElementsAre(chunk(QStringLiteral("x"))));
}

TEST_F(BackendDictateClientTest, FileUnreadable_EndsWithTheFilesErrorAndSendsNothing) {
    const Consumer consumer(start(root.filePath(QStringLiteral("absent.m4a"))));
    EXPECT_EQ(consumer.failure(), QStringLiteral("No such file or directory"));
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(BackendDictateClientTest, NotSignedIn_EndsWithNotLoggedIn) {
    store.clear();
    const Consumer consumer = dictate();
    EXPECT_TRUE(consumer.failedWith<BackendError>());
    EXPECT_EQ(consumer.failure(), QStringLiteral("Не авторизован"));
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(BackendDictateClientTest, TransportFailure_EndsWithIt) {
    const Consumer before = dictate();
    transport.last().fail(QStringLiteral("Connection refused"));
    EXPECT_TRUE(before.failedWith<TransportError>());
    EXPECT_EQ(before.failure(), QStringLiteral("Connection refused"));

    const Consumer during = dictate();
    transport.last().begin(200);
    transport.last().piece(
        "event: chunk\ndata: {\"delta\":\"раз\"}\n\nevent: done\ndata: {\"text\":\"\",\"wordCount\":0}");
    transport.last().fail(QStringLiteral("Socket operation timed out"));
    EXPECT_THAT(during.events(), ElementsAre(chunk(QStringLiteral("раз"))));
    EXPECT_EQ(during.failure(), QStringLiteral("Socket operation timed out"));
}

TEST_F(BackendDictateClientTest, ReplyThatIsNotHTTP_EndsWithDictateClientError) {
    const Consumer consumer = dictate();
    transport.last().reply(0, doneBlock);
    EXPECT_TRUE(consumer.failedWith<DictateClientError>());
    EXPECT_EQ(consumer.failure(), QStringLiteral("Нет ответа от сервера"));
}

TEST_F(BackendDictateClientTest, OtherStatuses_EndWithTheBodysMessageOrTheStatus) {
    const auto failureOf = [this](qint64 status, const QByteArray& body) {
        const Consumer consumer = dictate();
        transport.last().reply(status, body);
        EXPECT_TRUE(consumer.failedWith<DictateClientError>());
        EXPECT_TRUE(consumer.events().empty());
        return consumer.failure();
    };
    EXPECT_EQ(failureOf(402, R"({"code":"limit","message":"Лимит"})"), QStringLiteral("Лимит"));
    EXPECT_EQ(failureOf(402, R"({"code":"limit"})"), QStringLiteral("HTTP 402"));
    EXPECT_EQ(failureOf(502, "<html>"), QStringLiteral("HTTP 502"));
    EXPECT_EQ(failureOf(201, doneBlock), QStringLiteral("HTTP 201"));
    EXPECT_EQ(failureOf(204, ""), QStringLiteral("HTTP 204"));
}

TEST_F(BackendDictateClientTest, ErrorBodyOfExactly4096Bytes_IsReadWhole_OneMoreIsCut) {
    const QByteArray start = R"({"message":"m","pad":")";
    const QByteArray fits = start + QByteArray(4096 - start.size() - 2, 'x') + "\"}";
    ASSERT_EQ(fits.size(), 4096);
    const Consumer whole = dictate();
    transport.last().reply(500, fits);
    EXPECT_EQ(whole.failure(), QStringLiteral("m"));

    const Consumer cut = dictate();
    transport.last().begin(500);
    transport.last().piece(QByteArray(fits).insert(start.size(), 'x'));
    EXPECT_EQ(cut.failure(), QStringLiteral("HTTP 500")); // without waiting for the end
    EXPECT_TRUE(transport.last().isAborted());
}

TEST_F(BackendDictateClientTest, ErrorBodyBreaksOff_TheStatusStillTells) {
    const Consumer consumer = dictate();
    transport.last().begin(503);
    transport.last().piece("{\"mess");
    transport.last().fail(QStringLiteral("closed"));
    EXPECT_EQ(consumer.failure(), QStringLiteral("HTTP 503"));
}

TEST_F(BackendDictateClientTest, First401_RotatesAndSendsTheSameAudioWithTheNewToken) {
    const Consumer consumer = dictate();
    transport.at(0).reply(401, R"({"message":"expired"})");
    ASSERT_EQ(transport.count(), 2U);
    replyWithNewTokens();
    ASSERT_EQ(transport.count(), 3U);
    const HttpRequest& again = transport.last().request;
    EXPECT_EQ(again.headers.value("Authorization"), "Bearer access-2");
    EXPECT_TRUE(again.body.contains(audio));
    const QByteArray type = again.headers.value("Content-Type");
    EXPECT_NE(type, transport.at(0).request.headers.value("Content-Type"));
    const QByteArray boundary = type.mid(type.indexOf('=') + 1);
    EXPECT_TRUE(again.body.startsWith("--" + boundary + "\r\n"));
    EXPECT_TRUE(again.body.endsWith("\r\n--" + boundary + "--\r\n"));
    transport.last().reply(200, doneBlock);
    EXPECT_THAT(consumer.events(), ElementsAre(done));
}

TEST_F(BackendDictateClientTest, First401_ReadsTheBodyBeforeItRotates) {
    const Consumer consumer = dictate();
    transport.at(0).begin(401);
    EXPECT_EQ(transport.count(), 1U);
    transport.at(0).piece(QByteArray(4095, ' '));
    EXPECT_EQ(transport.count(), 1U);
    transport.at(0).piece("  ");
    EXPECT_EQ(transport.count(), 2U);
}

TEST_F(BackendDictateClientTest, RotationFails_EndsWithTheSessionExpiredSentence) {
    const Consumer consumer = dictate();
    transport.at(0).reply(401);
    transport.at(1).fail(QStringLiteral("no network"));
    EXPECT_TRUE(consumer.failedWith<DictateClientError>());
    EXPECT_EQ(consumer.failure(), QStringLiteral("Сессия истекла. Войдите снова."));
    EXPECT_TRUE(store.isLoggedIn()); // not for this client to clear
}

TEST_F(BackendDictateClientTest, Second401_TakesItsMessageAndLeavesTheSignInAlone) {
    const Consumer consumer = dictate();
    transport.at(0).reply(401, R"({"message":"first"})");
    replyWithNewTokens();
    transport.at(2).reply(401, R"({"message":"second"})");
    EXPECT_EQ(consumer.failure(), QStringLiteral("second"));
    EXPECT_TRUE(store.isLoggedIn());
    EXPECT_EQ(transport.count(), 3U);
}

TEST_F(BackendDictateClientTest, A401BesideAnotherRequests401_SharesTheRotation) {
    const Consumer consumer = dictate();
    const Outcome<HttpReply> other(session.rawAuthedRequest(QStringLiteral("/v1/x"), "GET"));
    transport.at(1).reply(401);
    transport.at(0).reply(401);
    ASSERT_EQ(transport.count(), 3U);
    replyWithNewTokens();
    EXPECT_EQ(transport.count(), 5U);
}

TEST_F(BackendDictateClientTest, ConsumerDropsTheStream_RequestIsAborted) {
    { const auto beforeHead = start(audioFile); }
    EXPECT_TRUE(transport.at(0).isAborted());
    {
        const auto inBody = start(audioFile);
        transport.at(1).begin(200);
    }
    EXPECT_TRUE(transport.at(1).isAborted());
    {
        const auto inErrorBody = start(audioFile);
        transport.at(2).begin(401);
    }
    EXPECT_TRUE(transport.at(2).isAborted());
    EXPECT_EQ(transport.count(), 3U);
}

TEST_F(BackendDictateClientTest, ConsumerDropsTheStreamDuringTheRotation_NothingIsSentAgain) {
    {
        const auto stream = start(audioFile);
        transport.at(0).reply(401);
    }
    EXPECT_FALSE(transport.at(1).isAborted()); // others may wait for it
    replyWithNewTokens();
    EXPECT_EQ(transport.count(), 2U);
    EXPECT_EQ(store.tokens()->accessToken, QStringLiteral("access-2"));
}

TEST_F(BackendDictateClientTest, ConsumerDropsTheStreamAtAnEvent_TheRestOfThePieceIsNotDecoded) {
    struct Once {
        static Task<> run(AsyncStream<DictateEvent> stream, int& count) {
            if (const auto event = co_await stream.next())
                ++count;
        }
    };
    int count = 0;
    const Outcome<> once(Once::run(start(audioFile), count));
    transport.last().begin(200);
    transport.last().piece(
        "event: chunk\ndata: {\"delta\":\"1\"}\n\nevent: chunk\ndata: {\"delta\":\"2\"}\n\n");
    EXPECT_TRUE(once.succeeded());
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(transport.last().isAborted());
}

TEST_F(BackendDictateClientTest, ClientDestroyed_StreamsEndAndTheRequestIsAborted) {
    const Consumer opening = dictate();
    const Consumer rotating = dictate();
    transport.at(1).reply(401);
    client.reset();
    EXPECT_TRUE(opening.ended());
    EXPECT_TRUE(transport.at(0).isAborted());
    replyWithNewTokens();
    EXPECT_TRUE(rotating.ended());
    EXPECT_EQ(transport.count(), 3U);
}

TEST_F(BackendDictateClientTest, TwoDictations_AreIndependent) {
    const Consumer one = dictate();
    const Consumer two = dictate();
    transport.at(1).reply(500);
    transport.at(0).reply(200, doneBlock);
    EXPECT_THAT(one.events(), ElementsAre(done));
    EXPECT_EQ(two.failure(), QStringLiteral("HTTP 500"));
}

TEST_F(BackendDictateClientTest, ConsumerDropsTheStreamWhileTheFileIsRead_NothingIsSent) {
    { const auto stream = client->dictate(audioFile); }
    loop.runPosted();
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(BackendDictateClientTest, ClientDestroyedWhileTheFileIsRead_StreamEndsAndNothingIsSent) {
    const Consumer consumer(client->dictate(audioFile));
    client.reset();
    loop.runPosted();
    EXPECT_TRUE(consumer.ended());
    EXPECT_EQ(transport.count(), 0U);
}
