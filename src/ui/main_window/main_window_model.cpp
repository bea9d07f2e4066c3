#include "ui/main_window/main_window_model.h"

#include "core/app_settings.h"

namespace velmora {

MainWindowModel::MainWindowModel(const Neighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_nav(neighbours.settings.nav)
    , m_perms(neighbours.settings.perms)
    , m_settings(neighbours.settings.settings)
    , m_sidebar(m_perms, neighbours.settings.authStore, neighbours.settings.authSession)
    , m_history(neighbours.store, neighbours.settings.loop, neighbours.pasteboard)
    , m_settingsSheet(neighbours.settings) {
    for (const auto changed : {&AppSettings::hotkeyChanged, &AppSettings::hotkeyCustomLabelChanged,
                               &AppSettings::fnStandInChanged})
        connect(&m_settings, changed, this, &MainWindowModel::hotkeyChanged);
}

void MainWindowModel::refresh() {
    m_perms.refresh();
    Q_EMIT m_history.changed();
}

} // namespace velmora
