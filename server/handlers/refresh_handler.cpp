#include "handlers/refresh_handler.h"

#include "accounts/access_tokens.h"
#include "accounts/session_store.h"
#include "http/exchange.h"
#include "http/http_error.h"

namespace velmora::server {

void RefreshHandler::handle(Exchange& exchange) {
    const auto value = exchange.readJson()->get("refreshToken");
    if (!value.isString()) {
        throw HttpError(400, "bad_request", "Нет поля refreshToken", {{"field", "refreshToken"}});
    }
    const auto session = m_sessions.rotate(value.extract<std::string>());
    if (!session) {
        throw HttpError(401, "invalid_refresh_token", "Сессия истекла");
    }
    Poco::JSON::Object reply;
    reply.set("accessToken", m_tokens.issue(*session));
    reply.set("refreshToken", session->refreshToken);
    exchange.sendJson(200, reply);
}

} // namespace velmora::server
