#pragma once

#include <sys/types.h>

#include <istream>
#include <string>

namespace Poco::Net {
class SocketAddress;
}

namespace velmora::server {

/// The person this server runs for, as the operating system knows them.
struct LocalUser {
    std::string email;
    std::string name;

    /// Fails with std::runtime_error if the user id has no entry.
    [[nodiscard]] static LocalUser current();
};

/// True if the program at the other end of a loopback connection runs as the same user as this server. Every
/// user of the machine can reach a loopback port, so this is what "it's me" stands on.
[[nodiscard]] bool isOwnConnection(const Poco::Net::SocketAddress& peer,
                                   const Poco::Net::SocketAddress& ownAddress);

/// The same for that user, by what the kernel's table of connections says.
[[nodiscard]] bool isConnectionOf(uid_t user, const Poco::Net::SocketAddress& peer,
                                  const Poco::Net::SocketAddress& ownAddress, std::istream& table);

} // namespace velmora::server
