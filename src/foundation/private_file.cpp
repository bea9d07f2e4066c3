#include "foundation/private_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <unistd.h>

#include <cstdio>

namespace velmora {

bool makePrivateFolder(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(path).isDir();
}

bool replacePrivateFile(const QString& path, const QByteArray& bytes) {
    // Not QSaveFile: its file is readable by all between its making and a change of its mode.
    QTemporaryFile file(path + QStringLiteral(".XXXXXX")); // made with mode 600, gone again unless renamed
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush() || ::fsync(file.handle()) != 0)
        return false;
    if (std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
        return false;
    file.setAutoRemove(false);
    return true;
}

} // namespace velmora
