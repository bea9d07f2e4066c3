#include "ui/settings/account_header_model.h"

#include "backend/auth_store.h"
#include "backend/backend_url.h"

namespace velmora {

AccountHeaderModel::AccountHeaderModel(const SettingsNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_authStore(neighbours.authStore)
    , m_authSession(neighbours.authSession)
    , m_signIn(neighbours.authStore, neighbours.workspace, landingURL(neighbours.info))
    , m_site(neighbours.info, neighbours.workspace)
    , m_refresh(neighbours.authSession) {
    connect(&m_authStore, &AuthStore::isLoggedInChanged, this, &AccountHeaderModel::changed);
    connect(&m_authSession, &AuthSession::userChanged, this, &AccountHeaderModel::changed);
}

bool AccountHeaderModel::signedIn() const {
    return m_authStore.isLoggedIn();
}

QString AccountHeaderModel::name() const {
    if (!signedIn())
        return m_lacksBrowser ? QStringLiteral("Не удалось открыть браузер.")
                              : QStringLiteral("Не подключён");
    return m_authSession.user() ? m_authSession.user()->email : QStringLiteral("Подключён");
}

void AccountHeaderModel::signIn() {
    m_lacksBrowser = !m_signIn.openLoginURL();
    Q_EMIT changed();
}

void AccountHeaderModel::appeared() {
    if (!m_authSession.user())
        m_refresh.start();
}

} // namespace velmora
