#include "ui/menu_bar/menu_bar_popover_model.h"

namespace velmora {

bool MenuBarPopoverModel::canRecord() const {
    return m_snapshot.hotkeyActive && m_snapshot.inputMonitoringGranted && m_snapshot.accessibilityGranted;
}

PopoverAction MenuBarPopoverModel::headAction() const {
    return canRecord() ? PopoverAction::TestRecord : PopoverAction::OpenPermissions;
}

QString MenuBarPopoverModel::recordHint() const {
    return m_snapshot.hotkeyActive ? QStringLiteral("удерживайте, чтобы говорить")
                                   : QStringLiteral("клик — тестовая запись 3с");
}

QString MenuBarPopoverModel::warningHint() const {
    if (!m_snapshot.inputMonitoringGranted)
        return QStringLiteral("Нужен Input Monitoring · клик →");
    if (!m_snapshot.accessibilityGranted)
        return QStringLiteral("Нужен Accessibility (для вставки) · клик →");
    return QStringLiteral("Перезапусти приложение после выдачи прав.");
}

} // namespace velmora
