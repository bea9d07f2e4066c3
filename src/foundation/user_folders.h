#pragma once

#include <QString>

namespace velmora {

/// $XDG_DATA_HOME/Velmora. Not made here.
[[nodiscard]] QString applicationSupportFolder();
/// The user-defaults file, $XDG_CONFIG_HOME/Velmora/defaults.json.
[[nodiscard]] QString defaultsPath();
/// A file that ships with the program: beside the program in a build folder, else under ../share/velmora.
[[nodiscard]] QString resourcePath(const QString& name);

/// A program that ships with this one and that users don't start: beside it in a build folder, else under
/// ../libexec/velmora.
[[nodiscard]] QString helperPath(const QString& name);

} // namespace velmora
