#pragma once

#include <cstddef>

namespace velmora::server {

class AccessTokens;
class AccountStore;
class Exchange;
class HostPolicy;
class HttpError;
class Router;
class SessionStore;

/// Leads every request through the same gates: host, route, sign-in, handler; and turns failures into
/// replies. Called from many threads at once.
class Dispatcher {
public:
    Dispatcher(const Router& router, const HostPolicy& hosts, const AccessTokens& tokens,
               SessionStore& sessions, AccountStore& accounts, std::size_t bodySize);

    /// What the head alone decides: the exchange has got its handler, or its reply. Needs nothing of the
    /// body, so that a refusal doesn't wait for it.
    void admit(Exchange& exchange) const;

    /// Has the handler answer an exchange that was admitted.
    void answer(Exchange& exchange) const;

private:
    template<typename Step>
    void attempt(Exchange& exchange, Step step) const;
    void passGates(Exchange& exchange) const;
    void signIn(Exchange& exchange) const;
    void sendError(Exchange& exchange, const HttpError& error) const;

    const Router& m_router;
    const HostPolicy& m_hosts;
    const AccessTokens& m_tokens;
    SessionStore& m_sessions;
    AccountStore& m_accounts;
    /// The largest body that is gathered.
    std::size_t m_bodySize;
};

} // namespace velmora::server
