#pragma once

#include <Poco/Net/HTTPRequestHandlerFactory.h>

namespace velmora::server {

class AccessTokens;
class AccountStore;
class ConnectionWatch;
class Exchange;
class HostPolicy;
class HttpError;
class Router;
class SessionStore;

/// Leads every request through the same gates: host, route, sign-in, handler; and turns failures into
/// replies.
class Dispatcher : public Poco::Net::HTTPRequestHandlerFactory {
public:
    Dispatcher(const Router& router, const HostPolicy& hosts, const AccessTokens& tokens,
               SessionStore& sessions, AccountStore& accounts, ConnectionWatch& watch);

    Poco::Net::HTTPRequestHandler* createRequestHandler(const Poco::Net::HTTPServerRequest& request) override;

    void dispatch(Poco::Net::HTTPServerRequest& request, Poco::Net::HTTPServerResponse& response);

private:
    void answer(Exchange& exchange);
    void signIn(Exchange& exchange);
    void sendError(Exchange& exchange, const HttpError& error);

    const Router& m_router;
    const HostPolicy& m_hosts;
    const AccessTokens& m_tokens;
    SessionStore& m_sessions;
    AccountStore& m_accounts;
    ConnectionWatch& m_watch;
};

} // namespace velmora::server
