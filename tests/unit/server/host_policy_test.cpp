#include "http/host_policy.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

TEST(HostPolicy, AddressesAndLocalhost_AreAccepted) {
    const HostPolicy policy({});
    for (const std::string host : {"127.0.0.1", "127.0.0.1:8791", "localhost", "LOCALHOST:1", "[::1]",
                                   "[::1]:8791", "192.168.1.20:8791"}) {
        EXPECT_TRUE(policy.accepts(host)) << host;
    }
}

TEST(HostPolicy, NamesThatMayPointHere_AreRefused) {
    const HostPolicy policy({});
    for (const std::string host : {"", "evil.example", "evil.example:8791", "127.0.0.1.evil.example",
                                   "localhost.evil", "[::1", "localhost@evil", ":8791"}) {
        EXPECT_FALSE(policy.accepts(host)) << host;
    }
}

TEST(HostPolicy, GivenNames_AreAccepted) {
    const HostPolicy policy({"Voice.example.org"});
    EXPECT_TRUE(policy.accepts("voice.example.org"));
    EXPECT_TRUE(policy.accepts("VOICE.EXAMPLE.ORG:443"));
    EXPECT_FALSE(policy.accepts("example.org"));
}

} // namespace
} // namespace velmora::server
