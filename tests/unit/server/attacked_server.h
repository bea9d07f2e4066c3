#pragma once

#include "app/server.h"
#include "fake_recogniser.h"
#include "raw_client.h"
#include "speech/sample_rate.h"
#include "speech/wav.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <vector>

namespace velmora::server {

using namespace std::chrono_literals;

/// A server with limits that a test can reach, and clients that try to.
class AttackedServer : public testing::Test {
protected:
    AttackedServer() {
        options.listen = "127.0.0.1:0";
        options.data = folder.path() / "data";
        // Nothing is cut for its time unless a test wants that.
        options.http.header = options.http.patience = options.http.write = options.http.drain = 1h;
        options.http.leastRate = 1;
    }

    void start(std::unique_ptr<Recogniser> recogniser = std::make_unique<FakeRecogniser>()) {
        server = std::make_unique<Server>(options, std::move(recogniser));
        client.emplace(server->address());
        tokens = client->signUp("ann@example.org");
    }

    StuckRecogniser& startStuck() {
        auto recogniser = std::make_unique<StuckRecogniser>();
        auto& reference = *recogniser;
        start(std::move(recogniser));
        return reference;
    }

    [[nodiscard]] RawClient connect(const std::string& from = "127.0.0.1") const {
        return RawClient(server->address(), from);
    }

    /// Connections that say nothing.
    [[nodiscard]] std::vector<RawClient> silent(std::size_t count, const std::string& from = "127.0.0.1") {
        std::vector<RawClient> clients;
        for (std::size_t i = 0; i < count; ++i) {
            clients.push_back(connect(from));
        }
        return clients;
    }

    /// The head of a request that announces a body; and of one that is signed in.
    [[nodiscard]] std::string headOf(const std::string& method, const std::string& path, std::size_t length,
                                     const std::string& more = {}) const {
        return method + " " + path + " HTTP/1.1\r\nHost: " + server->address() +
               "\r\nContent-Length: " + std::to_string(length) + "\r\n" + more + "\r\n";
    }
    [[nodiscard]] std::string signedHeadOf(const std::string& method, const std::string& path,
                                           std::size_t length, const std::string& more = {}) const {
        return headOf(method, path, length, "Authorization: Bearer " + tokens.access + "\r\n" + more);
    }
    /// Of an upload whose first part has begun.
    [[nodiscard]] std::string uploadHead(std::size_t length, const std::string& more = {}) const {
        return signedHeadOf("POST", "/v1/dictate", length,
                            "Content-Type: multipart/form-data; boundary=b\r\n" + more) +
               "--b\r\nContent-Disposition: form-data; name=\"file\"\r\n\r\n";
    }

    [[nodiscard]] int statusOfMe() const { return client->sendAs(tokens, "GET", "/v1/auth/me").status; }

    /// Some sound that counts as speech.
    [[nodiscard]] static std::string sound(std::chrono::milliseconds length = 2s) {
        std::vector<std::int16_t> samples(samplesIn(length));
        for (std::size_t i = 0; i < samples.size(); ++i) {
            samples[i] = static_cast<std::int16_t>((i % 50) * 200);
        }
        return wavFile(samples);
    }

    TestFolder folder;
    ServerOptions options;
    std::unique_ptr<Server> server;
    std::optional<TestClient> client;
    Tokens tokens;
};

inline void expectRefusal(const Reply& reply, int status, const std::string& code) {
    ASSERT_EQ(reply.status, status) << reply.body;
    EXPECT_EQ(reply.code(), code);
    EXPECT_EQ(reply.headers.contains("Retry-After"), status == 503);
}

} // namespace velmora::server
