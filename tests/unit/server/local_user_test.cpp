#include "accounts/local_user.h"

#include <Poco/Net/ServerSocket.h>
#include <Poco/Net/StreamSocket.h>
#include <gmock/gmock.h>

namespace velmora::server {
namespace {

class LocalUserConnection : public testing::TestWithParam<const char*> {};

TEST_P(LocalUserConnection, OfThisProcess_IsOwn_UntilItIsUnknown) {
    const Poco::Net::ServerSocket server(Poco::Net::SocketAddress(GetParam(), 0));
    const Poco::Net::StreamSocket client(server.address());
    EXPECT_TRUE(isOwnConnection(client.address(), client.peerAddress()));
    const Poco::Net::SocketAddress otherPort(client.address().host(), 1);
    EXPECT_FALSE(isOwnConnection(otherPort, client.peerAddress()));
}

INSTANTIATE_TEST_SUITE_P(Families, LocalUserConnection, testing::Values("127.0.0.1", "::1"));

TEST(LocalUser, OtherMachines_AreNeverOwn) {
    EXPECT_FALSE(
        isOwnConnection(Poco::Net::SocketAddress("192.0.2.1:5"), Poco::Net::SocketAddress("192.0.2.2:6")));
}

TEST(LocalUser, Current_HasNameAndAddress) {
    const auto user = LocalUser::current();
    EXPECT_FALSE(user.name.empty());
    EXPECT_THAT(user.email, testing::EndsWith("@localhost"));
}

} // namespace
} // namespace velmora::server
