#pragma once

#include <QString>

namespace velmora {

class AuthStore;
class Workspace;

/// Begins the sign-in, which ends with a callback URL from the page.
class SignIn {
public:
    /// `landingURL` as it stands in the configuration.
    SignIn(AuthStore& store, Workspace& workspace, QString landingURL);

    /// Opens the landing site's sign-in page with a new state. False when no browser could be started.
    bool openLoginURL();

private:
    AuthStore& m_store;
    Workspace& m_workspace;
    const QString m_landingURL;
};

} // namespace velmora
