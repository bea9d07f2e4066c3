#include "handlers/patch_preferences_handler.h"

#include "accounts/account_store.h"
#include "http/exchange.h"

namespace velmora::server {

void PatchPreferencesHandler::handle(Exchange& exchange) {
    const auto patch = PreferencesPatch::fromJson(*exchange.readJson());
    exchange.sendJson(200, m_accounts.patchPreferences(exchange.identity().account.id, patch).toJson());
}

} // namespace velmora::server
