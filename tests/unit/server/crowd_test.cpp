#include "attacked_server.h"
#include "descriptor_rlimit.h"

namespace velmora::server {
namespace {

/// Of this process, which has the server in it.
std::ptrdiff_t openSockets() {
    return std::ranges::count_if(std::filesystem::directory_iterator("/proc/self/fd"), [](const auto& entry) {
        std::error_code ignored;
        return std::filesystem::read_symlink(entry.path(), ignored).string().starts_with("socket:");
    });
}

/// Clients that are many.
class Crowd : public AttackedServer {
protected:
    [[nodiscard]] RawClient dictate(const std::string& from = "127.0.0.1") const {
        auto dictating = connect(from);
        dictating.send(client->dictationRequest(tokens, sound()));
        return dictating;
    }
};

TEST_F(Crowd, SilentConnectionsOfAnAddress_GiveWayToTheNext_OldestFirst) {
    options.http.waitingPerAddress = 8;
    start();
    auto clients = silent(40);
    EXPECT_EQ(statusOfMe(), 200);
    // Of the last eight one gave way to the question above.
    for (std::size_t i = 0; i < 33; ++i) {
        expectRefusal(clients[i].reply(), 503, "busy");
    }
    for (std::size_t i = 33; i < 40; ++i) {
        EXPECT_FALSE(clients[i].hasReply()) << i;
        clients[i].send(signedHeadOf("GET", "/v1/auth/me", 0));
        EXPECT_EQ(clients[i].reply().status, 200);
    }
}

TEST_F(Crowd, UnfinishedBodiesOfAnAddress_GiveWayToTheNext) {
    options.http.waitingPerAddress = 8;
    start();
    std::vector<RawClient> clients;
    for (int i = 0; i < 9; ++i) {
        clients.push_back(connect());
        // That it is told to go on shows that the server waits for the body.
        clients.back().send(headOf("POST", "/auth", 10'000, "Expect: 100-continue\r\n"));
        EXPECT_THAT(clients.back().readUntil("\r\n\r\n"), testing::HasSubstr("100 Continue"));
    }
    expectRefusal(clients.front().reply(), 503, "busy");
    for (std::size_t i = 1; i < clients.size(); ++i) {
        EXPECT_FALSE(clients[i].hasReply());
    }
    EXPECT_EQ(statusOfMe(), 200);
}

TEST_F(Crowd, SilentConnectionsOfOneAddress_HarmNoOther) {
    options.http.waitingPerAddress = 8;
    start();
    auto other = connect("127.0.0.2");
    const auto clients = silent(40, "127.0.0.3");
    EXPECT_EQ(statusOfMe(), 200);
    EXPECT_FALSE(other.hasReply());
    other.send(signedHeadOf("GET", "/v1/auth/me", 0));
    EXPECT_EQ(other.reply().status, 200);
}

TEST_F(Crowd, TooManyConnectionsInAll_TheGreediestAddressGivesWay) {
    options.http.connections = 20;
    start();
    auto few = silent(4, "127.0.0.2");
    auto many = silent(30, "127.0.0.3");
    EXPECT_EQ(statusOfMe(), 200);
    expectRefusal(many.front().reply(), 503, "busy");
    for (auto& patient : few) {
        patient.send(signedHeadOf("GET", "/v1/auth/me", 0));
        EXPECT_EQ(patient.reply().status, 200);
    }
}

TEST_F(Crowd, Connections_AreNoMoreThanDescriptorsAllow) {
    const DescriptorRlimit limit(192);
    start();
    auto clients = silent(60);
    EXPECT_EQ(statusOfMe(), 200);
    expectRefusal(clients.front().reply(), 503, "busy");
}

TEST_F(Crowd, AllConnectionsAtWork_ANewcomerIsTold) {
    options.http.connections = 2;
    auto& recogniser = startStuck();
    const auto one = dictate();
    const auto other = dictate();
    ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 2));
    expectRefusal(connect().reply(), 503, "busy");
}

TEST_F(Crowd, RepliedConnectionsThatStay_GiveWay) {
    options.http.waitingPerAddress = 4;
    start();
    std::vector<RawClient> clients;
    for (int i = 0; i < 10; ++i) {
        clients.push_back(connect());
        clients.back().send(headOf("GET", "/v1/auth/me", 0));
        EXPECT_EQ(clients.back().reply().status, 401);
    }
    EXPECT_TRUE(clients.front().isAbandoned());
}

TEST_F(Crowd, TooManyStreamsOfAnAddress_Are503_OthersAndShortRequestsAreServed) {
    options.http.streamsPerAddress = 2;
    auto& recogniser = startStuck();
    const auto one = dictate();
    const auto other = dictate();
    ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 2));
    expectRefusal(dictate().reply(), 503, "busy");
    EXPECT_EQ(statusOfMe(), 200);
    const auto elsewhere = dictate("127.0.0.2");
    EXPECT_TRUE(recogniser.waitUntil(recogniser.started, 3));
}

TEST_F(Crowd, TooManyStreamsInAll_Are503_ShortRequestsAreServed) {
    options.http.streams = 2;
    auto& recogniser = startStuck();
    const auto one = dictate("127.0.0.2");
    const auto other = dictate("127.0.0.3");
    ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 2));
    expectRefusal(dictate().reply(), 503, "busy");
    EXPECT_EQ(statusOfMe(), 200);
}

TEST_F(Crowd, StreamsThatEnded_MakeRoom) {
    options.http.streamsPerAddress = 1;
    start();
    for (int i = 0; i < 5; ++i) {
        // A client may see the end of its stream before the server has counted it.
        EXPECT_TRUE(comesTrue([&] { return client->dictate(tokens, sound()).status == 200; }));
    }
}

TEST_F(Crowd, StoppingTheServer_CutsWhoIsThere) {
    start();
    auto saying = connect();
    auto uploading = connect();
    uploading.send(uploadHead(1'000'000, "Expect: 100-continue\r\n"));
    EXPECT_THAT(uploading.readUntil("\r\n\r\n"), testing::HasSubstr("100 Continue"));
    server.reset();
    EXPECT_EQ(saying.reply().status, 0);
}

TEST_F(Crowd, SlowUploads_HoldUpNoShortRequest) {
    start();
    // As many as one account may have, of several accounts.
    std::vector<RawClient> uploads;
    for (int i = 0; i < 100; ++i) {
        if (i % options.limits.perAccount == 0) {
            tokens = client->signUp(std::to_string(i) + "@example.org");
        }
        uploads.push_back(connect());
        uploads.back().send(uploadHead(1'000'000));
    }
    EXPECT_EQ(statusOfMe(), 200);
    for (auto& upload : uploads) {
        EXPECT_FALSE(upload.hasReply());
    }
}

TEST_F(Crowd, NoDescriptorLeft_ASilentConnectionGivesWay) {
    start();
    // Only the one that listens; and then both ends of this connection.
    ASSERT_TRUE(comesTrue([] { return openSockets() == 1; }));
    auto old = connect();
    ASSERT_TRUE(comesTrue([] { return openSockets() == 3; }));
    std::vector<Poco::Net::StreamSocket> taken;
    const DescriptorRlimit limit(256);
    try {
        for (;;) {
            taken.emplace_back(Poco::Net::SocketAddress::IPv4);
        }
    } catch (const Poco::Exception&) {
        taken.pop_back();
    }
    // Takes the last one, so there is none for the server's end.
    auto newcomer = connect();
    newcomer.send(signedHeadOf("GET", "/v1/auth/me", 0));
    EXPECT_EQ(old.reply().status, 0);
    EXPECT_EQ(newcomer.reply().status, 200);
}

} // namespace
} // namespace velmora::server
