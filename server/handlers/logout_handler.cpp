#include "handlers/logout_handler.h"

#include "accounts/session_store.h"
#include "http/exchange.h"

namespace velmora::server {

void LogoutHandler::handle(Exchange& exchange) {
    m_sessions.revoke(exchange.identity().sessionId);
    exchange.sendEmpty(204);
}

} // namespace velmora::server
