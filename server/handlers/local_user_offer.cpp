#include "handlers/local_user_offer.h"

#include "http/exchange.h"

#include <Poco/Net/SocketAddress.h>

namespace velmora::server {

LocalUserOffer::LocalUserOffer(std::optional<LocalUser> user)
    : m_user(std::move(user)) {}

std::optional<LocalUser> LocalUserOffer::to(const Exchange& exchange) const {
    return m_user && isOwnConnection(exchange.peer(), exchange.ownAddress()) ? m_user : std::nullopt;
}

std::optional<std::string> LocalUserOffer::nameFor(const Exchange& exchange) const {
    const auto user = to(exchange);
    return user ? std::optional(user->name) : std::nullopt;
}

} // namespace velmora::server
