#include "foundation/process_folder.h"

#include "foundation/life_claim.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>

#include <cstdlib>

namespace velmora {
namespace {

constexpr const char* randomPart = "XXXXXX";

Descriptor openFolder(const QString& path) {
    return Descriptor(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

} // namespace

ProcessFolder::ProcessFolder(QString parent, QString name)
    : m_prefix(std::move(parent) + QLatin1Char('/') + std::move(name) + QLatin1Char('-')) {}

ProcessFolder::~ProcessFolder() {
    if (m_folder.isOpen())
        QDir(m_path).removeRecursively();
}

QString ProcessFolder::path() {
    if (!isThere() && !make())
        return m_prefix + QLatin1String(randomPart);
    return m_path;
}

bool ProcessFolder::isThere() const {
    return m_folder.isOpen() && QFileInfo(m_path).isDir();
}

bool ProcessFolder::make() {
    while (true) {
        QByteArray name = QFile::encodeName(m_prefix + QLatin1String(randomPart));
        if (::mkdtemp(name.data()) == nullptr) // of mode 700
            return false;
        m_path = QFile::decodeName(name);
        m_folder = openFolder(m_path);
        if (!m_folder.isOpen() || claimForLife(m_folder.get(), m_path))
            return m_folder.isOpen();
    }
}

void ProcessFolder::removeAbandoned() const {
    const QFileInfo prefix(m_prefix);
    const QString pattern = prefix.fileName() + QString(qstrlen(randomPart), QLatin1Char('?'));
    for (const QFileInfo& found :
         QDir(prefix.path()).entryInfoList({pattern}, QDir::Dirs | QDir::NoSymLinks)) {
        const QString path = found.filePath();
        const Descriptor folder = openFolder(path);
        if (path != m_path && folder.isOpen() && isAbandoned(folder.get()))
            QDir(path).removeRecursively();
    }
}

} // namespace velmora
