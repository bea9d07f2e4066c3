#include "ui/settings/settings_sheet_model.h"

#include "backend/auth_store.h"
#include "backend/backend_url.h"
#include "foundation/info_dictionary.h"
#include "platform/workspace.h"

namespace velmora {
namespace {

QString versionText(const InfoDictionary& info) {
    const auto version = info.string(QStringLiteral("CFBundleShortVersionString"));
    return version ? QStringLiteral("Версия ") + *version : QString();
}

} // namespace

SettingsSheetModel::SettingsSheetModel(const SettingsNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_nav(neighbours.nav)
    , m_authStore(neighbours.authStore)
    , m_workspace(neighbours.workspace)
    , m_signIn(neighbours.authStore, neighbours.workspace, landingURL(neighbours.info))
    , m_version(versionText(neighbours.info))
    , m_site(neighbours.info.string(QStringLiteral("VelmorLandingURL")).value_or(QString()))
    , m_recording(neighbours)
    , m_permissions(neighbours.perms) {
    connect(&m_nav, &AppNavigator::settingsTabChanged, this, &SettingsSheetModel::tabChanged);
    connect(&m_authStore, &AuthStore::isLoggedInChanged, this, &SettingsSheetModel::signedInChanged);
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
