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

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace velmora {
namespace {

/// Six letters and digits behind the name; a word that somebody has put there, as in "history.json.backup",
/// is not one of ours.
QRegularExpression unfinishedName(const QString& path) {
    return QRegularExpression(QStringLiteral("^%1\\.(?=.*[A-Z0-9])[A-Za-z0-9]{6}$")
                                  .arg(QRegularExpression::escape(QFileInfo(path).fileName())));
}

/// A new file beside `path`, of mode 600, which nobody takes for a leftover while this process lives.
class Unfinished {
public:
    explicit Unfinished(const QString& path) {
        const QRegularExpression ours = unfinishedName(path);
        while (make(path) && (!ours.match(QFileInfo(this->path()).fileName()).hasMatch() ||
                              !claimForLife(descriptor(), this->path())))
            remove();
    }

    [[nodiscard]] bool isOpen() const { return m_file.isOpen(); }
    [[nodiscard]] int descriptor() const { return m_file.get(); }
    [[nodiscard]] bool moveTo(const QString& path) const {
        return std::rename(m_name.constData(), QFile::encodeName(path).constData()) == 0;
    }
    void remove() const { ::unlink(m_name.constData()); }

private:
    [[nodiscard]] bool make(const QString& path) {
        m_name = QFile::encodeName(path) + ".XXXXXX";
        m_file = Descriptor(::mkostemp(m_name.data(), O_CLOEXEC));
        return isOpen();
    }
    [[nodiscard]] QString path() const { return QFile::decodeName(m_name); }

    QByteArray m_name;
    Descriptor m_file;
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

} // namespace

bool makePrivateFolder(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(path).isDir();
}

bool replacePrivateFile(const QString& path, const QByteArray& bytes) {
    // Not QSaveFile: its file is readable by all between its making and a change of its mode.
    const Unfinished unfinished(path);
    if (!unfinished.isOpen())
        return false;
    if (writeAll(unfinished.descriptor(), bytes) && unfinished.moveTo(path))
        return true;
    unfinished.remove();
    return false;
}

void removeUnfinished(const QString& path) {
    const QRegularExpression unfinished = unfinishedName(path);
    const QDir folder = QFileInfo(path).dir();
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
