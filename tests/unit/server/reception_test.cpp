#include "accounts/access_tokens.h"
#include "accounts/account_store.h"
#include "accounts/database.h"
#include "accounts/session_store.h"
#include "accounts/signing_key.h"
#include "http/dispatcher.h"
#include "http/exchange.h"
#include "http/handler.h"
#include "http/host_policy.h"
#include "http/reception.h"
#include "http/router.h"
#include "raw_client.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <condition_variable>

namespace velmora::server {
namespace {

/// Replies once it is let.
struct HeldHandler : Handler {
    HeldHandler(Work work, bool open)
        : m_work(work)
        , m_open(open) {}

    [[nodiscard]] Work work() const override { return m_work; }

    void handle(Exchange& exchange) override {
        std::unique_lock lock(m_mutex);
        ++m_held;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_open; });
        exchange.sendEmpty(204);
    }

    void release() {
        const std::scoped_lock lock(m_mutex);
        m_open = true;
        m_changed.notify_all();
    }

    [[nodiscard]] bool waitUntilHeld(int count) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, patience, [&] { return m_held >= count; });
    }

private:
    Work m_work;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_open;
    int m_held = 0;
};

class ReceptionTest : public testing::Test {
protected:
    ReceptionTest() {
        const auto add = [this](const std::string& path, Work work, bool open) {
            auto handler = std::make_unique<HeldHandler>(work, open);
            auto& reference = *handler;
            router.add("GET", path, Access::Public, std::move(handler));
            return &reference;
        };
        add("/quick", Work::Quick, true);
        heavy = add("/heavy", Work::Heavy, false);
        stream = add("/stream", Work::Stream, false);
    }

    /// The reception waits for its handlers, whatever became of the test.
    ~ReceptionTest() override {
        heavy->release();
        stream->release();
    }

    [[nodiscard]] RawClient ask(const std::string& path) const {
        RawClient client(socket.address().toString());
        client.send("GET " + path + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
        return client;
    }

    /// Holds up many requests of a kind, and asks for something short beside them.
    void expectQuickRequestsBeside(const std::string& path, HeldHandler& handler, int count) {
        std::vector<RawClient> clients;
        for (int i = 0; i < 100; ++i) {
            clients.push_back(ask(path));
        }
        ASSERT_TRUE(handler.waitUntilHeld(count));
        EXPECT_EQ(ask("/quick").reply().status, 204);
        handler.release();
        for (auto& client : clients) {
            EXPECT_EQ(client.reply().status, 204);
        }
    }

    TestFolder folder;
    Clock clock = std::chrono::system_clock::now;
    SigningKey key{folder.path() / "key"};
    Database database{folder.path() / "database"};
    AccountStore accounts{database, "auto", clock};
    SessionStore sessions{database, clock};
    AccessTokens tokens{key.derive(SigningKey::Purpose::AccessTokens), clock};
    HostPolicy hosts{{}};
    Router router;
    HeldHandler* heavy = nullptr;
    HeldHandler* stream = nullptr;
    HttpLimits limits;
    Dispatcher dispatcher{router, hosts, tokens, sessions, accounts, limits.bodySize};
    Poco::Net::ServerSocket socket{Poco::Net::SocketAddress("127.0.0.1", 0)};
    Reception reception{socket, limits, dispatcher};
};

TEST_F(ReceptionTest, HeavyRequests_HoldUpNoQuickOne) {
    expectQuickRequestsBeside("/heavy", *heavy, 16);
}

TEST_F(ReceptionTest, Streams_HoldUpNoQuickOne_NorEachOther) {
    expectQuickRequestsBeside("/stream", *stream, 100);
}

} // namespace
} // namespace velmora::server
