#pragma once

#include <QColor>
#include <QIcon>

namespace velmora {

/// The program's mark as the icon of its windows.
[[nodiscard]] QIcon brandIcon(const QColor& accent);

} // namespace velmora
