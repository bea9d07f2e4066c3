#pragma once

#include "ui/main_window/app_navigator.h"
#include "ui/main_window/permissions_model.h"

#include <QUrl>

namespace velmora {

class InfoDictionary;
class Workspace;

/// What the settings show: the permissions, what the program is, and for the tabs to come where its settings
/// are meanwhile.
class SettingsSheetModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")
    Q_PROPERTY(QString title READ title NOTIFY tabChanged)
    Q_PROPERTY(Page page READ page NOTIFY tabChanged)
    Q_PROPERTY(velmora::PermissionsModel* permissions READ permissions CONSTANT)
    /// "Версия 1.2.0"; empty in a program that doesn't know its own.
    Q_PROPERTY(QString version READ version CONSTANT)
    /// The program's site as it is shown; empty when there is none.
    Q_PROPERTY(QString site READ site CONSTANT)
    Q_PROPERTY(QString settingsPath READ settingsPath CONSTANT)

public:
    enum class Page { Permissions, About, ToCome };
    Q_ENUM(Page)

    SettingsSheetModel(const AppNavigator& nav, PermissionManager& perms, const InfoDictionary& info,
                       Workspace& workspace, const QString& settingsPath, QObject* parent = nullptr);

    [[nodiscard]] QString title() const;
    [[nodiscard]] Page page() const;
    [[nodiscard]] PermissionsModel* permissions() { return &m_permissions; }
    [[nodiscard]] QString version() const { return m_version; }
    [[nodiscard]] QString site() const;
    [[nodiscard]] QString settingsPath() const { return m_settingsPath; }

    Q_INVOKABLE void openSite();

Q_SIGNALS:
    void tabChanged();

private:
    const AppNavigator& m_nav;
    Workspace& m_workspace;
    const QString m_version;
    const QUrl m_site;
    const QString m_settingsPath;
    PermissionsModel m_permissions;
};

} // namespace velmora
