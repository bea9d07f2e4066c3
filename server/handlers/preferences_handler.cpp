#include "handlers/preferences_handler.h"

#include "accounts/account_store.h"
#include "http/exchange.h"

namespace velmora::server {

void PreferencesHandler::handle(Exchange& exchange) {
    exchange.sendJson(200, m_accounts.preferences(exchange.identity().account.id).toJson());
}

} // namespace velmora::server
