#pragma once

#include "backend/sign_in.h"
#include "ui/navigation/app_navigator.h"
#include "ui/settings/permissions_model.h"
#include "ui/settings/recording_settings_model.h"
#include "ui/settings/settings_neighbours.h"

#include <QUrl>

namespace velmora {

class AuthStore;
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
    Q_PROPERTY(velmora::RecordingSettingsModel* recording READ recording CONSTANT)
    Q_PROPERTY(velmora::PermissionsModel* permissions READ permissions CONSTANT)
    /// "Версия 1.2.0"; empty in a program that doesn't know its own.
    Q_PROPERTY(QString version READ version CONSTANT)
    /// The program's site as it is shown; empty when there is none.
    Q_PROPERTY(QString site READ site CONSTANT)
    Q_PROPERTY(bool signedIn READ signedIn NOTIFY signedInChanged)

public:
    enum class Page { Permissions, About, ToCome };
    Q_ENUM(Page)

    explicit SettingsSheetModel(const SettingsNeighbours& neighbours, QObject* parent = nullptr);

    [[nodiscard]] QString title() const;
    [[nodiscard]] Page page() const;
    [[nodiscard]] RecordingSettingsModel* recording() { return &m_recording; }
    [[nodiscard]] PermissionsModel* permissions() { return &m_permissions; }
    [[nodiscard]] QString version() const { return m_version; }
    [[nodiscard]] QString site() const;

    [[nodiscard]] bool signedIn() const;

    Q_INVOKABLE void openSite();
    /// Opens the sign-in page in the browser, which hands the user back.
    Q_INVOKABLE void signIn();

Q_SIGNALS:
    void tabChanged();
    void signedInChanged();

private:
    const AppNavigator& m_nav;
    const AuthStore& m_authStore;
    Workspace& m_workspace;
    SignIn m_signIn;
    const QString m_version;
    const QUrl m_site;
    RecordingSettingsModel m_recording;
    PermissionsModel m_permissions;
};

} // namespace velmora
