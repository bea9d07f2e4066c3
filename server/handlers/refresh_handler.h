#pragma once

#include "http/handler.h"

namespace velmora::server {

class AccessTokens;
class SessionStore;

/// POST /v1/auth/refresh: a refresh token for the next pair.
class RefreshHandler : public Handler {
public:
    RefreshHandler(SessionStore& sessions, const AccessTokens& tokens)
        : m_sessions(sessions)
        , m_tokens(tokens) {}

    void handle(Exchange& exchange) override;

private:
    SessionStore& m_sessions;
    const AccessTokens& m_tokens;
};

} // namespace velmora::server
