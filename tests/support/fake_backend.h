#pragma once

#include "backend/account_session.h"
#include "backend/dictate_service.h"
#include "foundation/error.h"

#include <deque>

namespace velmora::test {

/// A backend whose replies the test gives event by event.
class FakeDictateService final : public DictateService {
public:
    [[nodiscard]] AsyncStream<DictateEvent> dictate(QString audioFile, QString mimeType) override {
        requests.append(audioFile);
        mimeTypes.append(mimeType);
        auto [stream, producer] = AsyncStream<DictateEvent>::make();
        m_reply.emplace(std::move(producer));
        return std::move(stream);
    }

    void status(const QString& stage) { m_reply->yield(dictate_event::Status{stage}); }
    void chunk(const QString& delta) { m_reply->yield(dictate_event::Chunk{delta}); }
    void done(const QString& text) { m_reply->yield(dictate_event::Done{text, 0}); }
    void error(const QString& code, const QString& message) {
        m_reply->yield(dictate_event::Error{code, message});
    }
    void finish() { m_reply->finish(); }
    void fail(const QString& description) { m_reply->fail(std::make_exception_ptr(PlainError(description))); }

    QStringList requests;
    QStringList mimeTypes;

private:
    std::optional<AsyncStream<DictateEvent>::Producer> m_reply;
};

/// A signed-in account that notes what is asked of it; with `holdRefresh` each early refresh waits for
/// release().
class FakeAccountSession final : public AccountSession {
public:
    [[nodiscard]] bool isLoggedIn() const override { return loggedIn; }
    Task<> ensureFreshToken() override {
        ++freshTokenCalls;
        if (!holdRefresh)
            co_return;
        auto [released, producer] = AsyncStream<int>::make();
        m_held.push_back(std::move(producer));
        co_await released.next();
    }
    Task<> refreshMe() override {
        ++refreshMeCalls;
        refreshed();
        co_return;
    }
    /// Lets go those that wait; what still waits at the end is let go with the object.
    void release() { m_held.clear(); }

    bool loggedIn = true;
    bool holdRefresh = false;
    int freshTokenCalls = 0;
    int refreshMeCalls = 0;
    std::function<void()> refreshed = [] {};

private:
    std::deque<AsyncStream<int>::Producer> m_held;
};

} // namespace velmora::test
