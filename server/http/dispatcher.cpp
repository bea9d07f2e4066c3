#include "http/dispatcher.h"

#include "accounts/access_tokens.h"
#include "accounts/account_store.h"
#include "accounts/session_store.h"
#include "app/log.h"
#include "app/rare_log.h"
#include "http/client_network.h"
#include "http/exchange.h"
#include "http/host_policy.h"
#include "http/http_error.h"
#include "http/router.h"

#include <Poco/Net/SocketAddress.h>
#include <Poco/String.h>

#include <typeinfo>

namespace velmora::server {

Dispatcher::Dispatcher(const Router& router, const HostPolicy& hosts, const AccessTokens& tokens,
                       SessionStore& sessions, AccountStore& accounts, std::size_t bodySize)
    : m_router(router)
    , m_hosts(hosts)
    , m_tokens(tokens)
    , m_sessions(sessions)
    , m_accounts(accounts)
    , m_bodySize(bodySize) {}

template<typename Step>
void Dispatcher::attempt(Exchange& exchange, Step step) const {
    try {
        step();
    } catch (const HttpError& error) {
        // What a stalled body looked like to its reader says nothing of it.
        sendError(exchange, exchange.bodyBuffer().stalled() ? HttpError::tooSlow() : error);
    } catch (const std::exception& error) {
        log("request failed: " + exchange.method() + " " + typeid(error).name());
        sendError(exchange, HttpError(500, "internal_error", "Внутренняя ошибка сервера"));
    }
}

void Dispatcher::admit(Exchange& exchange) const {
    attempt(exchange, [&] { passGates(exchange); });
}

void Dispatcher::answer(Exchange& exchange) const {
    attempt(exchange, [&] { exchange.handler()->handle(exchange); });
}

void Dispatcher::passGates(Exchange& exchange) const {
    if (!m_hosts.accepts(exchange.header("Host"))) {
        throw HttpError(403, "bad_host", "Сервер не отвечает под этим именем");
    }
    auto match = m_router.find(exchange.method(), exchange.path());
    if (match.access == Access::SignedIn) {
        signIn(exchange);
    }
    if (match.handler.work() != Work::Stream && exchange.head().bodyLength() > m_bodySize) {
        throw HttpError::tooLarge();
    }
    exchange.lead(match.handler, std::move(match.parameters));
}

void Dispatcher::signIn(Exchange& exchange) const {
    const auto header = exchange.header("Authorization");
    constexpr std::string_view scheme = "Bearer ";
    if (Poco::icompare(header, 0, scheme.size(), std::string(scheme)) != 0) {
        throw HttpError(401, "not_logged_in", "Не авторизован");
    }
    const auto token = header.substr(scheme.size());
    const auto claims = m_tokens.verify(token);
    if (!claims && !m_tokens.isOurs(token)) {
        static RareLog forgeries;
        forgeries.write("an access token that was not made here, from " +
                        clientNetwork(exchange.peer().host()));
    }
    if (!claims || !m_sessions.isAlive(claims->sessionId)) {
        throw HttpError(401, "invalid_token", "Сессия истекла");
    }
    auto account = m_accounts.byId(claims->accountId);
    if (!account) {
        throw HttpError(401, "invalid_token", "Сессия истекла");
    }
    exchange.setIdentity({std::move(*account), claims->sessionId});
}

void Dispatcher::sendError(Exchange& exchange, const HttpError& error) const {
    if (exchange.replied()) {
        return;
    }
    if (error.status() == 401) {
        exchange.setReplyHeader("WWW-Authenticate", "Bearer");
    } else if (error.status() == 405) {
        exchange.setReplyHeader("Allow", m_router.allowedMethods(exchange.path()));
    }
    exchange.sendError(error);
}

} // namespace velmora::server
