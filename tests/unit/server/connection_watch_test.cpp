#include "http/connection_watch.h"

#include <Poco/Net/ServerSocket.h>
#include <Poco/Net/StreamSocket.h>
#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;

class ConnectionWatchTest : public testing::Test {
protected:
    ConnectionWatchTest() { client.setReceiveTimeout(Poco::Timespan(20, 0)); }

    /// Waits for the end of the connection; fails with a timeout if it doesn't come.
    [[nodiscard]] bool isCut() {
        char byte = 0;
        return client.receiveBytes(&byte, 1) == 0;
    }

    Poco::Net::ServerSocket server{Poco::Net::SocketAddress("127.0.0.1", 0)};
    Poco::Net::StreamSocket client{server.address()};
    Poco::Net::StreamSocket accepted{server.acceptConnection()};
    ConnectionWatch watch;
};

TEST_F(ConnectionWatchTest, OverdueConnection_IsCut) {
    watch.add(accepted, 10ms);
    EXPECT_TRUE(isCut());
}

TEST_F(ConnectionWatchTest, ShortenedTime_Counts) {
    watch.add(accepted, 1h);
    watch.allow(accepted, 10ms);
    EXPECT_TRUE(isCut());
}

TEST_F(ConnectionWatchTest, ProlongedOrForgotten_StaysOpen) {
    Poco::Net::StreamSocket otherClient(server.address());
    auto other = server.acceptConnection();
    Poco::Net::StreamSocket thirdClient(server.address());
    auto third = server.acceptConnection();
    watch.add(accepted, 1ms);
    watch.add(other, 1h);
    watch.add(third, 1h);
    watch.forget(third);
    // By the time the first is cut, the deadlines of all have been looked at.
    EXPECT_TRUE(isCut());
    for (auto* socket : {&otherClient, &thirdClient}) {
        EXPECT_FALSE(socket->poll(Poco::Timespan(0, 0), Poco::Net::Socket::SELECT_READ));
    }
}

TEST_F(ConnectionWatchTest, CutAll_CutsThoseThereAndThoseToCome) {
    Poco::Net::StreamSocket lateClient(server.address());
    lateClient.setReceiveTimeout(Poco::Timespan(20, 0));
    auto late = server.acceptConnection();
    watch.add(accepted, 1h);
    watch.cutAll();
    EXPECT_TRUE(isCut());
    watch.add(late, 1h);
    char byte = 0;
    EXPECT_EQ(lateClient.receiveBytes(&byte, 1), 0);
}

} // namespace
} // namespace velmora::server
