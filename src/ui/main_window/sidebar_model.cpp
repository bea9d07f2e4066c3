#include "ui/main_window/sidebar_model.h"

#include "backend/auth_store.h"
#include "ui/kit/v_icon.h"

namespace velmora {

SidebarModel::SidebarModel(const PermissionManager& perms, const AuthStore& authStore,
                           AuthSession& authSession, QObject* parent)
    : QObject(parent)
    , m_perms(perms)
    , m_authStore(authStore)
    , m_authSession(authSession)
    , m_refresh(authSession) {
    connect(&perms, &PermissionManager::micGrantedChanged, this, &SidebarModel::permissionsChanged);
    connect(&perms, &PermissionManager::accessibilityGrantedChanged, this, &SidebarModel::permissionsChanged);
    connect(&perms, &PermissionManager::inputMonitoringGrantedChanged, this,
            &SidebarModel::permissionsChanged);
    connect(&authStore, &AuthStore::isLoggedInChanged, this, &SidebarModel::accountChanged);
    connect(&authSession, &AuthSession::userChanged, this, &SidebarModel::accountChanged);
}

bool SidebarModel::allGranted() const {
    return m_perms.micGranted() && m_perms.accessibilityGranted() && m_perms.inputMonitoringGranted();
}

int SidebarModel::permissionIcon() const {
    return static_cast<int>(allGranted() ? VIcon::check : VIcon::lock);
}

QString SidebarModel::permissionLabel() const {
    return allGranted() ? QStringLiteral("Всё подключено") : QStringLiteral("Нужны разрешения");
}

QString SidebarModel::account() const {
    // The session keeps its user when it expires.
    return m_authStore.isLoggedIn() && m_authSession.user() ? m_authSession.user()->email : QString();
}

void SidebarModel::appeared() {
    if (!m_authSession.user())
        m_refresh.start();
}

} // namespace velmora
