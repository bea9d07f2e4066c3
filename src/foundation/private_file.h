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

/// Removes what writes of this file have left beside it when their process was killed, never what a living
/// process is writing.
void removeUnfinished(const QString& path);

/// Puts a file that can't be read out of the way of the one that will be written in its place, with
/// ".damaged" at its name, and says so in the log. `what` names its content there.
void keepDamaged(const char* what, const QString& path);

} // namespace velmora
