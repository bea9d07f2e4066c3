#pragma once

#include "http/handler.h"

namespace velmora::server {

class SessionStore;

/// POST /v1/auth/logout: ends the session that the access token belongs to.
class LogoutHandler : public Handler {
public:
    explicit LogoutHandler(SessionStore& sessions)
        : m_sessions(sessions) {}

    void handle(Exchange& exchange) override;

private:
    SessionStore& m_sessions;
};

} // namespace velmora::server
