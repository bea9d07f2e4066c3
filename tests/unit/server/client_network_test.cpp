#include "http/client_network.h"

#include <Poco/Net/IPAddress.h>
#include <gmock/gmock.h>

namespace velmora::server {
namespace {

std::string of(const std::string& address) {
    return clientNetwork(Poco::Net::IPAddress(address));
}

TEST(ClientNetwork, OfAnIpv4Address_IsThatAddress) {
    EXPECT_EQ(of("192.0.2.7"), "192.0.2.7");
    EXPECT_NE(of("192.0.2.7"), of("192.0.2.8"));
}

TEST(ClientNetwork, OfAnIpv6Address_IsItsFirstHalf) {
    EXPECT_EQ(of("2001:db8:1:2:3:4:5:6"), "2001:db8:1:2::/64");
    EXPECT_EQ(of("2001:db8:1:2:ffff::1"), of("2001:db8:1:2:3:4:5:6"));
    EXPECT_NE(of("2001:db8:1:3:3:4:5:6"), of("2001:db8:1:2:3:4:5:6"));
}

TEST(ClientNetwork, OfAnIpv4AddressInIpv6Form_IsTheIpv4Address) {
    EXPECT_EQ(of("::ffff:192.0.2.7"), "192.0.2.7");
}

} // namespace
} // namespace velmora::server
