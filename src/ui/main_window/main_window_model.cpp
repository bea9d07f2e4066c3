#include "ui/main_window/main_window_model.h"

#include "core/app_settings.h"

namespace velmora {

MainWindowModel::MainWindowModel(const Neighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_nav(neighbours.shared.nav)
    , m_perms(neighbours.shared.perms)
    , m_settings(neighbours.shared.settings)
    , m_sidebar(m_perms, neighbours.shared.authStore, neighbours.shared.authSession)
    , m_history(neighbours.store, neighbours.shared.loop, neighbours.pasteboard)
    , m_settingsSheet(neighbours.shared) {
    for (const auto changed : hotkeyLabelChanges)
        connect(&m_settings, changed, this, &MainWindowModel::hotkeyChanged);
}

void MainWindowModel::refresh() {
    m_perms.refresh();
    Q_EMIT m_history.changed();
}

} // namespace velmora
