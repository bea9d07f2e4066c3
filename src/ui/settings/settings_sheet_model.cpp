#include "ui/main_window/settings_sheet_model.h"

#include "backend/auth_store.h"
#include "backend/backend_url.h"
#include "foundation/info_dictionary.h"
#include "platform/workspace.h"

#include <QDir>

namespace velmora {
namespace {

QString versionText(const InfoDictionary& info) {
    const auto version = info.string(QStringLiteral("CFBundleShortVersionString"));
    return version ? QStringLiteral("Версия ") + *version : QString();
}

/// As a person would write it: the home folder is "~".
QString inHome(const QString& path) {
    const QString home = QDir::homePath() + QLatin1Char('/');
    return path.startsWith(home) ? QStringLiteral("~/") + path.mid(home.size()) : path;
}

} // namespace

SettingsSheetModel::SettingsSheetModel(const AppNavigator& nav, PermissionManager& perms,
                                       AuthStore& authStore, const InfoDictionary& info, Workspace& workspace,
                                       const QString& settingsPath, QObject* parent)
    : QObject(parent)
    , m_nav(nav)
    , m_authStore(authStore)
    , m_workspace(workspace)
    , m_signIn(authStore, workspace, landingURL(info))
    , m_version(versionText(info))
    , m_site(info.string(QStringLiteral("VelmorLandingURL")).value_or(QString()))
    , m_settingsPath(inHome(settingsPath))
    , m_permissions(perms) {
    connect(&nav, &AppNavigator::settingsTabChanged, this, &SettingsSheetModel::tabChanged);
    connect(&authStore, &AuthStore::isLoggedInChanged, this, &SettingsSheetModel::signedInChanged);
}

QString SettingsSheetModel::title() const {
    switch (page()) {
    case Page::Permissions:
        return QStringLiteral("Разрешения");
    case Page::About:
        return QStringLiteral("О программе");
    case Page::ToCome:
        return QStringLiteral("Настройки");
    }
    Q_UNREACHABLE();
}

SettingsSheetModel::Page SettingsSheetModel::page() const {
    if (m_nav.settingsTab() == QLatin1String("permissions"))
        return Page::Permissions;
    if (m_nav.settingsTab() == QLatin1String("about"))
        return Page::About;
    return Page::ToCome;
}

QString SettingsSheetModel::site() const {
    const QString path = m_site.path();
    return m_site.host() + (path == QLatin1String("/") ? QString() : path);
}

void SettingsSheetModel::openSite() {
    if (m_site.isValid())
        m_workspace.openURL(m_site);
}

bool SettingsSheetModel::signedIn() const {
    return m_authStore.isLoggedIn();
}

void SettingsSheetModel::signIn() {
    m_signIn.openLoginURL();
}

} // namespace velmora
