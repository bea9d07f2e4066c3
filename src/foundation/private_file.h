#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// Makes the folder, with those above it, so that nobody but the user can look into it. One that exists is
/// left as it is. False when it isn't there afterwards.
bool makePrivateFolder(const QString& path);

/// Puts `bytes` in the place of the file, all or nothing. Nobody but the user can read them at any moment
/// (mode 600). False when that failed; the old file is there then.
[[nodiscard]] bool replacePrivateFile(const QString& path, const QByteArray& bytes);

} // namespace velmora
