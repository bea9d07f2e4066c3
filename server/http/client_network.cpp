#include "http/client_network.h"

#include <Poco/Net/IPAddress.h>

#include <array>
#include <cstring>

namespace velmora::server {

using Poco::Net::IPAddress;

std::string clientNetwork(const IPAddress& address) {
    if (address.family() == Poco::Net::AddressFamily::IPv4) {
        return address.toString();
    }
    std::array<unsigned char, 16> bytes{};
    std::memcpy(bytes.data(), address.addr(), bytes.size());
    if (address.isIPv4Mapped()) {
        return IPAddress(bytes.data() + 12, 4).toString();
    }
    std::memset(bytes.data() + 8, 0, 8);
    return IPAddress(bytes.data(), bytes.size()).toString() + "/64";
}

} // namespace velmora::server
