#pragma once

#include "backend/http_transport.h"

#include <deque>

namespace velmora::test {

/// One request that the code under test has made, with its reply in the test's hand.
class FakeExchange {
public:
    FakeExchange(HttpRequest request, AsyncStream<OpenHttpReply>::Producer head, std::stop_token stop);

    const HttpRequest request;

    /// The whole reply at once.
    void reply(qint64 status, const QByteArray& body = {});
    /// Status alone; the body follows in pieces.
    void begin(qint64 status);
    void piece(const QByteArray& bytes);
    void end();
    void fail(const QString& description);

    /// The asking side has dropped or stopped it.
    [[nodiscard]] bool isAborted() const { return m_aborted; }

private:
    using OnStop = std::stop_callback<std::function<void()>>;

    std::optional<AsyncStream<OpenHttpReply>::Producer> m_head; // until the reply begins
    std::optional<AsyncStream<QByteArray>::Producer> m_body;    // from then on
    bool m_aborted = false;
    std::optional<OnStop> m_onBodyDropped;
    OnStop m_onStop;
};

/// Keeps the requests and answers none, unless told how.
class FakeHttpTransport final : public HttpTransport {
public:
    Task<OpenHttpReply> open(HttpRequest request, std::stop_token stop) override;

    [[nodiscard]] std::size_t count() const { return m_exchanges.size(); }
    [[nodiscard]] FakeExchange& at(std::size_t index) { return m_exchanges.at(index); }
    [[nodiscard]] FakeExchange& last() { return m_exchanges.back(); }

    /// Called with each request as it comes.
    std::function<void(FakeExchange&)> onRequest;

private:
    std::deque<FakeExchange> m_exchanges;
};

} // namespace velmora::test
