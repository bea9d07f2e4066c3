#pragma once

#include "backend/account_refresh.h"
#include "backend/sign_in.h"
#include "ui/settings/landing_site.h"
#include "ui/settings/settings_neighbours.h"

#include <QtQml/qqmlregistration.h>

namespace velmora {

/// Whose settings they are.
class AccountHeaderModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the sheet's")
    Q_PROPERTY(bool signedIn READ signedIn NOTIFY changed)
    /// The account's address, or how things stand while there is none.
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(bool hasPage READ hasPage NOTIFY changed)

public:
    explicit AccountHeaderModel(const SettingsNeighbours& neighbours, QObject* parent = nullptr);

    [[nodiscard]] bool signedIn() const;
    [[nodiscard]] QString name() const;
    [[nodiscard]] bool hasPage() const { return signedIn() && m_site.exists(); }

    /// The view has come up: reads the account if it isn't known.
    Q_INVOKABLE void appeared();
    /// Opens the sign-in page in the browser, which hands the user back.
    Q_INVOKABLE void signIn();
    Q_INVOKABLE void openPage() { m_site.open(QStringLiteral("account")); }

Q_SIGNALS:
    void changed();

private:
    const AuthStore& m_authStore;
    const AuthSession& m_authSession;
    SignIn m_signIn;
    LandingSite m_site;
    AccountRefresh m_refresh;
    bool m_lacksBrowser = false;
};

} // namespace velmora
