#include "support/fake_http_transport.h"

namespace velmora::test {

FakeExchange::FakeExchange(HttpRequest newRequest, AsyncStream<OpenHttpReply>::Producer head,
                           std::stop_token stop)
    : request(std::move(newRequest))
    , m_head(std::move(head))
    , m_onStop(std::move(stop), [this] {
        if (!m_head && !m_body)
            return;
        m_aborted = true;
        fail(QStringLiteral("Operation canceled"));
    }) {}

void FakeExchange::reply(qint64 status, const QByteArray& body) {
    begin(status);
    if (!body.isEmpty())
        piece(body);
    end();
}

void FakeExchange::begin(qint64 status) {
    auto [stream, body] = AsyncStream<QByteArray>::make();
    m_onBodyDropped.emplace(body.stopToken(), [this] { m_aborted = m_aborted || m_body.has_value(); });
    m_body.emplace(std::move(body));
    std::exchange(m_head, std::nullopt)->yield(OpenHttpReply{status, {}, std::move(stream)});
}

void FakeExchange::piece(const QByteArray& bytes) {
    if (m_body)
        m_body->yield(bytes);
}

void FakeExchange::end() {
    if (auto body = std::exchange(m_body, std::nullopt))
        body->finish();
}

void FakeExchange::fail(const QString& description) {
    const std::exception_ptr failure = std::make_exception_ptr(TransportError(description));
    if (auto head = std::exchange(m_head, std::nullopt))
        head->fail(failure);
    else if (auto body = std::exchange(m_body, std::nullopt))
        body->fail(failure);
}

Task<OpenHttpReply> FakeHttpTransport::open(HttpRequest request, std::stop_token stop) {
    auto [stream, head] = AsyncStream<OpenHttpReply>::make();
    AsyncStream<OpenHttpReply> heads = std::move(stream);
    FakeExchange& exchange = m_exchanges.emplace_back(std::move(request), std::move(head), std::move(stop));
    if (onRequest)
        onRequest(exchange);
    std::optional<OpenHttpReply> reply = co_await heads.next();
    if (!reply)
        throw TransportError(QStringLiteral("the test ended"));
    co_return *std::move(reply);
}

} // namespace velmora::test
