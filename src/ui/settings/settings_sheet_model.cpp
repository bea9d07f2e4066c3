#include "ui/settings/settings_sheet_model.h"

#include "ui/settings/settings_tabs.h"

namespace velmora {

SettingsSheetModel::SettingsSheetModel(const SettingsNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_nav(neighbours.nav)
    , m_account(neighbours)
    , m_general(neighbours.settings)
    , m_recording(neighbours)
    , m_ai(neighbours)
    , m_permissions(neighbours.perms)
    , m_relaunch(neighbours.relauncher)
    , m_about(neighbours.info, neighbours.workspace) {
    connect(&m_nav, &AppNavigator::settingsTabChanged, this, &SettingsSheetModel::tabChanged);
}

QVariantList SettingsSheetModel::tabs() {
    QVariantList tabs;
    for (const VPillNavItem& tab : settingsTabs())
        tabs.append(QVariant::fromValue(tab));
    return tabs;
}

void SettingsSheetModel::stepTab(int by) {
    setTab(settingsTabBeside(tab(), by));
}

} // namespace velmora
