#pragma once

#include <string>

namespace Poco::Net {
class IPAddress;
}

namespace velmora::server {

/// What limits count as one client: an IPv4 address, or the /64 that an IPv6 address is in. Whoever has one
/// of those addresses has all 2^64 of them.
[[nodiscard]] std::string clientNetwork(const Poco::Net::IPAddress& address);

} // namespace velmora::server
