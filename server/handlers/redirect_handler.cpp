#include "handlers/redirect_handler.h"

#include "http/exchange.h"

namespace velmora::server {

RedirectHandler::RedirectHandler(std::string target)
    : m_target(std::move(target)) {}

void RedirectHandler::handle(Exchange& exchange) {
    exchange.setReplyHeader("Location", m_target);
    exchange.sendEmpty(302);
}

} // namespace velmora::server
