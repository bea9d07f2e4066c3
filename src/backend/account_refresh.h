#pragma once

#include "backend/auth_session.h"

namespace velmora {

/// Reads the account for a screen that misses something of it.
class AccountRefresh {
public:
    explicit AccountRefresh(AuthSession& session)
        : m_session(session) {}

    /// A read under way is enough; who is signed out has nothing to read.
    void start() {
        if (!m_session.isLoading())
            m_tasks.start(QStringLiteral("account refresh"), m_session.refreshMe());
    }

private:
    AuthSession& m_session;
    TaskScope m_tasks;
};

} // namespace velmora
