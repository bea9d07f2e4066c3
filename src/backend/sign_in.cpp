#include "backend/sign_in.h"

#include "backend/auth_store.h"
#include "platform/workspace.h"

namespace velmora {

SignIn::SignIn(AuthStore& store, Workspace& workspace, QString landingURL)
    : m_store(store)
    , m_workspace(workspace)
    , m_landingURL(std::move(landingURL)) {}

bool SignIn::openLoginURL() {
    const QString state = m_store.issuePendingAuthState();
    return m_workspace.openURL(QUrl(m_landingURL + QStringLiteral("/auth?source=app&state=") + state));
}

} // namespace velmora
