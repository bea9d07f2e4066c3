#include "accounts/local_user.h"

#include <Poco/Net/SocketAddress.h>
#include <arpa/inet.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace velmora::server {

namespace {

/// The form of /proc/net/tcp: the address in words of host byte order, then the port.
std::string kernelForm(const Poco::Net::SocketAddress& address) {
    std::ostringstream text;
    text << std::uppercase << std::hex << std::setfill('0');
    const auto host = address.host();
    const auto* words = static_cast<const std::uint32_t*>(host.addr());
    for (std::size_t i = 0; i < static_cast<std::size_t>(host.length()) / sizeof(std::uint32_t); ++i) {
        text << std::setw(8) << words[i];
    }
    text << ':' << std::setw(4) << address.port();
    return text.str();
}

} // namespace

LocalUser LocalUser::current() {
    const auto* entry = ::getpwuid(::getuid());
    if (!entry) {
        throw std::runtime_error("the current user has no name");
    }
    const std::string login = entry->pw_name;
    const std::string details = entry->pw_gecos ? entry->pw_gecos : "";
    const auto fullName = details.substr(0, details.find(','));
    return {.email = login + "@localhost", .name = fullName.empty() ? login : fullName};
}

bool isOwnConnection(const Poco::Net::SocketAddress& peer, const Poco::Net::SocketAddress& ownAddress) {
    const bool isV6 = peer.host().family() == Poco::Net::AddressFamily::IPv6;
    std::ifstream table(isV6 ? "/proc/net/tcp6" : "/proc/net/tcp");
    return isConnectionOf(::getuid(), peer, ownAddress, table);
}

bool isConnectionOf(uid_t user, const Poco::Net::SocketAddress& peer,
                    const Poco::Net::SocketAddress& ownAddress, std::istream& table) {
    if (!peer.host().isLoopback()) {
        return false;
    }
    const auto local = kernelForm(peer);
    const auto remote = kernelForm(ownAddress);
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        std::string slot, from, to, state, queues, timer, retransmits;
        uid_t owner = 0;
        if (fields >> slot >> from >> to >> state >> queues >> timer >> retransmits >> owner &&
            from == local && to == remote) {
            return owner == user;
        }
    }
    return false;
}

} // namespace velmora::server
