#pragma once

#include "backend/account_refresh.h"
#include "core/permission_manager.h"

#include <QtQml/qqmlregistration.h>

namespace velmora {

class AuthStore;

/// What the sidebar says about the permissions and the account.
class SidebarModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")
    Q_PROPERTY(bool allGranted READ allGranted NOTIFY permissionsChanged)
    Q_PROPERTY(int permissionIcon READ permissionIcon NOTIFY permissionsChanged)
    Q_PROPERTY(QString permissionLabel READ permissionLabel NOTIFY permissionsChanged)
    /// The signed-in account's address; empty when nobody is, or while it isn't known yet.
    Q_PROPERTY(QString account READ account NOTIFY accountChanged)

public:
    SidebarModel(const PermissionManager& perms, const AuthStore& authStore, AuthSession& authSession,
                 QObject* parent = nullptr);

    [[nodiscard]] bool allGranted() const;
    [[nodiscard]] int permissionIcon() const;
    [[nodiscard]] QString permissionLabel() const;
    [[nodiscard]] QString account() const;

    /// The view has come up: reads the account if it isn't known.
    Q_INVOKABLE void appeared();

Q_SIGNALS:
    void permissionsChanged();
    void accountChanged();

private:
    const PermissionManager& m_perms;
    const AuthStore& m_authStore;
    const AuthSession& m_authSession;
    AccountRefresh m_refresh;
};

} // namespace velmora
