#include "foundation/private_file.h"

#include "foundation/descriptor.h"
#include "foundation/life_claim.h"
#include "foundation/log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace velmora {
namespace {

/// A new file beside `path`, of mode 600, in which nobody sees a leftover while this process writes it.
struct Unfinished {
    explicit Unfinished(const QString& path) {
        do {
            name = QFile::encodeName(path) + ".XXXXXX";
            file = Descriptor(::mkostemp(name.data(), O_CLOEXEC));
        } while (file.isOpen() && !claimForLife(file.get(), QFile::decodeName(name)));
    }

    QByteArray name;
    Descriptor file;
};

bool writeAll(int descriptor, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), std::size_t(bytes.size()));
        if (written < 0 && errno != EINTR)
            return false;
        bytes = bytes.sliced(std::max<ssize_t>(written, 0));
    }
    return ::fsync(descriptor) == 0;
}

/// Six letters and digits behind the name; a word that somebody has put there, as in "history.json.backup",
/// is not one of ours.
QRegularExpression unfinishedName(const QString& fileName) {
    return QRegularExpression(
        QStringLiteral("^%1\\.(?=.*[A-Z0-9])[A-Za-z0-9]{6}$").arg(QRegularExpression::escape(fileName)));
}

} // namespace

bool makePrivateFolder(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(path).isDir();
}

bool replacePrivateFile(const QString& path, const QByteArray& bytes) {
    // Not QSaveFile: its file is readable by all between its making and a change of its mode.
    const Unfinished unfinished(path);
    if (!unfinished.file.isOpen())
        return false;
    if (writeAll(unfinished.file.get(), bytes) &&
        std::rename(unfinished.name.constData(), QFile::encodeName(path).constData()) == 0)
        return true;
    ::unlink(unfinished.name.constData());
    return false;
}

void removeUnfinished(const QString& path) {
    const QFileInfo file(path);
    const QRegularExpression unfinished = unfinishedName(file.fileName());
    const QDir folder = file.dir();
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks)) {
        if (!unfinished.match(name).hasMatch())
            continue;
        const QByteArray found = QFile::encodeName(folder.filePath(name));
        const Descriptor opened(::open(found.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
        if (opened.isOpen() && isAbandoned(opened.get()))
            ::unlink(found.constData());
    }
}

void keepDamaged(const char* what, const QString& path) {
    if (!QFileInfo(path).isFile())
        return;
    const QString aside = path + QStringLiteral(".damaged");
    QFile::remove(aside);
    if (QFile::rename(path, aside))
        log(QStringLiteral("[Velmora] %1: %2 is not readable, kept as %3")
                .arg(QLatin1String(what), path, aside));
}

} // namespace velmora
