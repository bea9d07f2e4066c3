#pragma once

#include "ui/navigation/app_navigator.h"
#include "ui/settings/about_model.h"
#include "ui/settings/account_header_model.h"
#include "ui/settings/ai_settings_model.h"
#include "ui/settings/general_settings_model.h"
#include "ui/settings/permissions_model.h"
#include "ui/settings/recording_settings_model.h"
#include "ui/settings/relaunch_model.h"

namespace velmora {

/// The settings: which tab shows, and what each of them works on.
class SettingsSheetModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")
    /// Of VPillNavItem.
    Q_PROPERTY(QVariantList tabs READ tabs CONSTANT)
    /// The id of a tab; an unknown one shows nothing.
    Q_PROPERTY(QString tab READ tab WRITE setTab NOTIFY tabChanged)
    Q_PROPERTY(velmora::AccountHeaderModel* account READ account CONSTANT)
    Q_PROPERTY(velmora::GeneralSettingsModel* general READ general CONSTANT)
    Q_PROPERTY(velmora::RecordingSettingsModel* recording READ recording CONSTANT)
    Q_PROPERTY(velmora::AISettingsModel* ai READ ai CONSTANT)
    Q_PROPERTY(velmora::PermissionsModel* permissions READ permissions CONSTANT)
    Q_PROPERTY(velmora::RelaunchModel* relaunch READ relaunch CONSTANT)
    Q_PROPERTY(velmora::AboutModel* about READ about CONSTANT)

public:
    explicit SettingsSheetModel(const SettingsNeighbours& neighbours, QObject* parent = nullptr);

    [[nodiscard]] static QVariantList tabs();
    [[nodiscard]] QString tab() const { return m_nav.settingsTab(); }
    void setTab(const QString& tab) { m_nav.setSettingsTab(tab); }
    [[nodiscard]] AccountHeaderModel* account() { return &m_account; }
    [[nodiscard]] GeneralSettingsModel* general() { return &m_general; }
    [[nodiscard]] RecordingSettingsModel* recording() { return &m_recording; }
    [[nodiscard]] AISettingsModel* ai() { return &m_ai; }
    [[nodiscard]] PermissionsModel* permissions() { return &m_permissions; }
    [[nodiscard]] RelaunchModel* relaunch() { return &m_relaunch; }
    [[nodiscard]] AboutModel* about() { return &m_about; }

    /// Goes on by so many tabs, around the end.
    Q_INVOKABLE void stepTab(int by);

Q_SIGNALS:
    void tabChanged();

private:
    AppNavigator& m_nav;
    AccountHeaderModel m_account;
    GeneralSettingsModel m_general;
    RecordingSettingsModel m_recording;
    AISettingsModel m_ai;
    PermissionsModel m_permissions;
    RelaunchModel m_relaunch;
    AboutModel m_about;
};

} // namespace velmora
