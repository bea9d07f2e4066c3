#include "ui/main_window/main_window_model.h"

#include "core/app_settings.h"

namespace velmora {

MainWindowModel::MainWindowModel(const Neighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_nav(neighbours.nav)
    , m_perms(neighbours.perms)
    , m_settings(neighbours.settings)
    , m_sidebar(neighbours.perms, neighbours.authStore, neighbours.authSession)
    , m_history(neighbours.store, neighbours.loop, neighbours.pasteboard)
    , m_settingsSheet(neighbours.nav, neighbours.perms, neighbours.authStore, neighbours.info,
                      neighbours.workspace, neighbours.settingsPath) {
    for (const auto changed : {&AppSettings::hotkeyChanged, &AppSettings::hotkeyCustomLabelChanged,
                               &AppSettings::fnStandInChanged})
        connect(&m_settings, changed, this, &MainWindowModel::hotkeyChanged);
}

void MainWindowModel::refresh() {
    m_perms.refresh();
    Q_EMIT m_history.changed();
}

} // namespace velmora
