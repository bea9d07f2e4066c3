#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// Puts `bytes` in the place of the file, all or nothing. Nobody but the user can read them at any moment
/// (mode 600). False when that failed; the old file is there then.
[[nodiscard]] bool replacePrivateFile(const QString& path, const QByteArray& bytes);

} // namespace velmora
