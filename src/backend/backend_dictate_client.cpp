#include "backend/backend_dictate_client.h"

#include "backend/auth_session.h"
#include "backend/backend_error.h"
#include "backend/backend_url.h"
#include "backend/dictate_client_error.h"
#include "backend/dictate_event_decoder.h"
#include "backend/dictation_form.h"
#include "foundation/worker.h"

namespace velmora {
namespace {

using Producer = AsyncStream<DictateEvent>::Producer;

constexpr std::chrono::seconds totalTimeout(180);
constexpr qsizetype maximumErrorBody = 4096;

/// Stops when any of two tokens does.
class EitherStop {
public:
    EitherStop(std::stop_token one, std::stop_token other)
        : m_one(std::move(one), Request{m_source})
        , m_other(std::move(other), Request{m_source}) {}

    [[nodiscard]] std::stop_token token() const { return m_source.get_token(); }

private:
    struct Request {
        std::stop_source source;
        void operator()() { source.request_stop(); }
    };

    std::stop_source m_source;
    std::stop_callback<Request> m_one;
    std::stop_callback<Request> m_other;
};

/// The first `limit` bytes of a body; one that breaks off has ended.
Task<QByteArray> readBeginning(AsyncStream<QByteArray> body, qsizetype limit) {
    QByteArray bytes;
    try {
        while (bytes.size() < limit) {
            const std::optional<QByteArray> piece = co_await body.next();
            if (!piece)
                break;
            bytes += *piece;
        }
    } catch (const TransportError&) {
        // What came before says more about the failure.
    }
    co_return bytes.left(limit);
}

/// Yields the event; whether more may follow.
bool pass(const SseEvent& event, Producer& events) {
    std::optional<DictateEvent> decoded = decodeDictateEvent(event);
    if (!decoded)
        return true;
    const bool last = std::holds_alternative<dictate_event::Done>(*decoded) ||
                      std::holds_alternative<dictate_event::Error>(*decoded);
    events.yield(*std::move(decoded));
    return !last && !events.stopToken().stop_requested();
}

Task<> consumeSSE(AsyncStream<QByteArray> body, Producer& events) {
    SseReader reader;
    while (const std::optional<QByteArray> piece = co_await body.next()) {
        for (const SseEvent& event : reader.feed(*piece)) {
            if (!pass(event, events))
                co_return;
        }
    }
    if (const std::optional<SseEvent> event = reader.finish())
        pass(*event, events);
}

} // namespace

BackendDictateClient::BackendDictateClient(HttpTransport& transport, AuthSession& session, MainLoop& loop,
                                           Worker& reader)
    : m_transport(transport)
    , m_session(session)
    , m_loop(loop)
    , m_reader(reader) {}

AsyncStream<DictateEvent> BackendDictateClient::dictate(QString audioFile, QString mimeType) {
    auto [stream, events] = AsyncStream<DictateEvent>::make();
    m_scope.start(QStringLiteral("dictate"),
                  run(std::move(events), std::move(audioFile), std::move(mimeType)));
    return std::move(stream);
}

Task<> BackendDictateClient::run(Producer events, QString audioFile, QString mimeType) {
    const EitherStop stop(m_scope.token(), events.stopToken());
    std::exception_ptr failure;
    try {
        // With a name: GCC 12 destroys a temporary with captures twice in an awaited expression.
        const auto read = [audioFile, mimeType] { return DictationForm(audioFile, mimeType); };
        DictationForm form = co_await m_reader.run(m_loop, read);
        if (stop.token().stop_requested())
            co_return;
        for (bool retried = false;; retried = true) {
            OpenHttpReply reply = co_await m_transport.open(buildRequest(form), stop.token());
            if (reply.status == 0)
                throw DictateClientError(QStringLiteral("Нет ответа от сервера"));
            if (reply.status == 200) {
                co_await consumeSSE(std::move(reply.body), events);
                break;
            }
            const QByteArray body = co_await readBeginning(std::move(reply.body), maximumErrorBody);
            if (stop.token().stop_requested())
                co_return;
            if (reply.status != 401 || retried)
                throw DictateClientError(extractErrorMessage(body, reply.status));
            try {
                co_await m_session.rotateAccessTokenPublic();
            } catch (...) {
                throw DictateClientError(QStringLiteral("Сессия истекла. Войдите снова."));
            }
            if (stop.token().stop_requested())
                co_return;
            form.renewBoundary();
        }
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure)
        events.fail(failure);
    else
        events.finish();
}

HttpRequest BackendDictateClient::buildRequest(const DictationForm& form) const {
    HttpRequest request = m_session.buildAuthedRequest(QStringLiteral("/v1/dictate"), "POST");
    request.headers.set("User-Agent", backendUserAgent);
    request.headers.set("Content-Type", form.contentType());
    request.headers.set("Accept", "text/event-stream");
    request.headers.set("Accept-Encoding", "identity"); // a compressor would hold events back
    request.totalTimeout = totalTimeout;
    request.body = form.bytes();
    return request;
}

QString extractErrorMessage(const QByteArray& bytes, qint64 status) {
    const std::optional<BackendErrorBody> body = BackendErrorBody::parse(bytes);
    return body && body->message ? *body->message : httpStatusMessage(status);
}

} // namespace velmora
