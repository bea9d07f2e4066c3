#include "handlers/me_handler.h"

#include "accounts/account_store.h"
#include "http/exchange.h"

#include <Poco/DateTimeFormat.h>
#include <Poco/DateTimeFormatter.h>

namespace velmora::server {

namespace {

std::string isoDate(std::chrono::sys_seconds time) {
    return Poco::DateTimeFormatter::format(Poco::Timestamp::fromEpochTime(time.time_since_epoch().count()),
                                           Poco::DateTimeFormat::ISO8601_FORMAT);
}

} // namespace

void MeHandler::handle(Exchange& exchange) {
    const auto& account = exchange.identity().account;
    Poco::JSON::Object user;
    user.set("id", account.id);
    user.set("email", account.email);
    if (account.emailVerifiedAt) {
        user.set("emailVerifiedAt", isoDate(*account.emailVerifiedAt));
    }
    user.set("isAdmin", account.isAdmin);
    user.set("createdAt", isoDate(account.createdAt));

    Poco::JSON::Object reply;
    reply.set("user", user);
    reply.set("preferences", m_accounts.preferences(account.id).toJson());
    exchange.sendJson(200, reply);
}

} // namespace velmora::server
