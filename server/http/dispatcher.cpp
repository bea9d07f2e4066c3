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

#include <Poco/Net/HTTPRequestHandler.h>
#include <Poco/Net/NetException.h>
#include <Poco/Net/SocketAddress.h>
#include <Poco/String.h>

#include <typeinfo>

namespace velmora::server {

namespace {

/// What a handler has for body, work and reply when it doesn't ask for more.
constexpr std::chrono::seconds usualTime{30};

class DispatchedRequest : public Poco::Net::HTTPRequestHandler {
public:
    explicit DispatchedRequest(Dispatcher& dispatcher)
        : m_dispatcher(dispatcher) {}

    void handleRequest(Poco::Net::HTTPServerRequest& request,
                       Poco::Net::HTTPServerResponse& response) override {
        m_dispatcher.dispatch(request, response);
    }

private:
    Dispatcher& m_dispatcher;
};

} // namespace

Dispatcher::Dispatcher(const Router& router, const HostPolicy& hosts, const AccessTokens& tokens,
                       SessionStore& sessions, AccountStore& accounts, ConnectionWatch& watch)
    : m_router(router)
    , m_hosts(hosts)
    , m_tokens(tokens)
    , m_sessions(sessions)
    , m_accounts(accounts)
    , m_watch(watch) {}

Poco::Net::HTTPRequestHandler*
Dispatcher::createRequestHandler(const Poco::Net::HTTPServerRequest& /*request*/) {
    return new DispatchedRequest(*this);
}

void Dispatcher::dispatch(Poco::Net::HTTPServerRequest& request, Poco::Net::HTTPServerResponse& response) {
    Exchange exchange(request, response, m_watch);
    exchange.allow(usualTime);
    try {
        answer(exchange);
    } catch (const HttpError& error) {
        sendError(exchange, error);
    } catch (const Poco::TimeoutException&) {
        sendError(exchange, HttpError(408, "timeout", "Запрос передавался слишком долго"));
    } catch (const Poco::Net::NetException&) {
        // The peer has gone: there is nobody to tell.
        return;
    } catch (const std::exception& error) {
        log("request failed: " + exchange.method() + " " + typeid(error).name());
        sendError(exchange, HttpError(500, "internal_error", "Внутренняя ошибка сервера"));
    }
    exchange.drain();
}

void Dispatcher::answer(Exchange& exchange) {
    if (!m_hosts.accepts(exchange.header("Host"))) {
        throw HttpError(403, "bad_host", "Сервер не отвечает под этим именем");
    }
    auto match = m_router.find(exchange.method(), exchange.path());
    exchange.setParameters(std::move(match.parameters));
    if (match.access == Access::SignedIn) {
        signIn(exchange);
    }
    match.handler.handle(exchange);
}

void Dispatcher::signIn(Exchange& exchange) {
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

void Dispatcher::sendError(Exchange& exchange, const HttpError& error) {
    if (exchange.replied()) {
        return;
    }
    if (error.status() == 401) {
        exchange.setReplyHeader("WWW-Authenticate", "Bearer");
    } else if (error.status() == 405) {
        exchange.setReplyHeader("Allow", m_router.allowedMethods(exchange.path()));
    }
    Poco::JSON::Object body;
    body.set("code", error.code());
    body.set("message", std::string(error.what()));
    if (!error.details().empty()) {
        Poco::JSON::Object details;
        for (const auto& [key, value] : error.details()) {
            details.set(key, value);
        }
        body.set("details", details);
    }
    exchange.sendJson(error.status(), body);
}

} // namespace velmora::server
