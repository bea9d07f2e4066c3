#include "accounts/local_user.h"

#include <Poco/Net/ServerSocket.h>
#include <Poco/Net/StreamSocket.h>
#include <gmock/gmock.h>

#include <sstream>

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

/// As the kernel writes it, for a connection from 127.0.0.1:40000 to 127.0.0.1:8791, seen from both its ends.
std::istringstream connectionsOf(uid_t client, uid_t server) {
    const std::string rest = " 01 00000000:00000000 00:00000000 00000000 ";
    return std::istringstream(
        "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid\n"
        "   0: 0100007F:2257 0100007F:9C40" +
        rest + std::to_string(server) +
        " 0 1\n"
        "   1: 0100007F:9C40 0100007F:2257" +
        rest + std::to_string(client) + " 0 2\n");
}

TEST(LocalUser, Connection_IsOfWhoHoldsItsOtherEnd) {
    const Poco::Net::SocketAddress peer("127.0.0.1:40000");
    const Poco::Net::SocketAddress own("127.0.0.1:8791");
    const auto isOf = [&](uid_t user, uid_t client) {
        auto table = connectionsOf(client, 1000);
        return isConnectionOf(user, peer, own, table);
    };
    EXPECT_TRUE(isOf(1000, 1000));
    EXPECT_FALSE(isOf(1000, 1001)) << "another user of the machine";
    EXPECT_FALSE(isOf(1000, 0));
    std::istringstream empty;
    EXPECT_FALSE(isConnectionOf(1000, peer, own, empty));
}

TEST(LocalUser, ConnectionFromElsewhere_IsNobodysHere_WhateverTheTableSays) {
    std::istringstream table(
        "   0: 0702000A:9C40 0100007F:2257 01 00000000:00000000 00:00000000 00000000 1000 0 2\n");
    EXPECT_FALSE(isConnectionOf(1000, Poco::Net::SocketAddress("10.0.2.7:40000"),
                                Poco::Net::SocketAddress("127.0.0.1:8791"), table));
}

TEST(LocalUser, Current_HasNameAndAddress) {
    const auto user = LocalUser::current();
    EXPECT_FALSE(user.name.empty());
    EXPECT_THAT(user.email, testing::EndsWith("@localhost"));
}

} // namespace
} // namespace velmora::server
