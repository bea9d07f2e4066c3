#include "ui/menu_bar/popover_row.h"

namespace velmora {

QList<PopoverRow> standardPopoverRows() {
    return {
        {.icon = VIcon::history,
         .label = QStringLiteral("История"),
         .separated = true,
         .action = PopoverAction::History},
        {.icon = VIcon::micFill, .label = QStringLiteral("Созвоны"), .action = PopoverAction::Meetings},
        {.icon = VIcon::gear,
         .label = QStringLiteral("Настройки"),
         .shortcut = QStringLiteral("⌘,"),
         .action = PopoverAction::Settings},
        {.icon = VIcon::info, .label = QStringLiteral("О программе"), .action = PopoverAction::About},
        {.label = QStringLiteral("Выйти"), .muted = true, .separated = true, .action = PopoverAction::Quit},
    };
}

} // namespace velmora
