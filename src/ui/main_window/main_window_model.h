#pragma once

#include "core/hotkey_label.h"
#include "ui/main_window/history_source.h"
#include "ui/main_window/sidebar_model.h"
#include "ui/navigation/app_navigator.h"
#include "ui/settings/settings_sheet_model.h"

namespace velmora {

class AppSettings;

/// All that the main window shows, put together.
class MainWindowModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")
    Q_PROPERTY(velmora::AppNavigator* nav READ nav CONSTANT)
    Q_PROPERTY(velmora::SidebarModel* sidebar READ sidebar CONSTANT)
    Q_PROPERTY(velmora::HistorySource* history READ history CONSTANT)
    Q_PROPERTY(velmora::SettingsSheetModel* settingsSheet READ settingsSheet CONSTANT)
    Q_PROPERTY(QString hotkeyLabel READ hotkeyLabel NOTIFY hotkeyChanged)
    /// Which key plays Fn, where one does.
    Q_PROPERTY(QString hotkeyNote READ hotkeyNote NOTIFY hotkeyChanged)

public:
    struct Neighbours {
        HistoryStore& store;
        Pasteboard& pasteboard;
        SettingsNeighbours shared; ///< with the settings
    };

    explicit MainWindowModel(const Neighbours& neighbours, QObject* parent = nullptr);

    [[nodiscard]] AppNavigator* nav() const { return &m_nav; }
    [[nodiscard]] SidebarModel* sidebar() { return &m_sidebar; }
    [[nodiscard]] HistorySource* history() { return &m_history; }
    [[nodiscard]] SettingsSheetModel* settingsSheet() { return &m_settingsSheet; }
    [[nodiscard]] QString hotkeyLabel() const { return velmora::hotkeyLabel(m_settings); }
    [[nodiscard]] QString hotkeyNote() const { return fnStandInNote(m_settings); }

    /// Reads again what nobody announces: the permissions, and what depends on the time.
    void refresh();

Q_SIGNALS:
    void hotkeyChanged();

private:
    AppNavigator& m_nav;
    PermissionManager& m_perms;
    const AppSettings& m_settings;
    SidebarModel m_sidebar;
    HistorySource m_history;
    SettingsSheetModel m_settingsSheet;
};

} // namespace velmora
