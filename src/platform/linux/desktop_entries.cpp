#include "platform/linux/desktop_entries.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>

namespace velmora {
namespace {

bool sameIgnoringCase(const QString& a, const QString& b) {
    return !a.isEmpty() && a.compare(b, Qt::CaseInsensitive) == 0;
}

// The escapes that names use in practice.
QString unescaped(QString value) {
    value.replace(QLatin1String("\\s"), QLatin1String(" "));
    value.replace(QLatin1String("\\\\"), QLatin1String("\\"));
    return value;
}

// The program that the line starts, past "env" and the variables set for it.
QString executableOf(const QString& exec) {
    for (const QString& word : QProcess::splitCommand(exec)) {
        const QString name = QFileInfo(word).fileName();
        if (name != QLatin1String("env") && !word.contains(QLatin1Char('=')))
            return name;
    }
    return {};
}

} // namespace

DesktopEntries::DesktopEntries(QStringList folders, const QString& locale)
    : m_folders(std::move(folders)) {
    for (const QString& name : {locale, locale.section(QLatin1Char('_'), 0, 0)})
        m_localeKeys << QStringLiteral("Name[%1]").arg(name);
    m_localeKeys << QStringLiteral("Name");
}

QStringList DesktopEntries::standardFolders() {
    return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

QString DesktopEntries::systemLocale() {
    return QLocale::system().name();
}

std::optional<DesktopEntry> DesktopEntries::withID(const QString& id) {
    refresh();
    return find([&](const DesktopEntry& entry) { return sameIgnoringCase(entry.id, id); });
}

std::optional<DesktopEntry> DesktopEntries::ofWindow(const QString& className, const QString& instance) {
    refresh();
    const Matches rules[] = {
        [&](const DesktopEntry& entry) { return !className.isEmpty() && entry.windowClass == className; },
        [&](const DesktopEntry& entry) { return sameIgnoringCase(entry.windowClass, className); },
        [&](const DesktopEntry& entry) { return sameIgnoringCase(entry.windowClass, instance); },
        [&](const DesktopEntry& entry) { return sameIgnoringCase(entry.id, className); },
        [&](const DesktopEntry& entry) { return sameIgnoringCase(entry.id, instance); },
        [&](const DesktopEntry& entry) {
            return sameIgnoringCase(entry.id.section(QLatin1Char('.'), -1), className);
        },
    };
    for (const Matches& rule : rules) {
        if (auto entry = find(rule))
            return entry;
    }
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::ofExecutable(const QString& name) {
    refresh();
    return find([&](const DesktopEntry& entry) { return !name.isEmpty() && entry.executable == name; });
}

std::optional<DesktopEntry> DesktopEntries::find(const Matches& matches) const {
    const auto found = std::ranges::find_if(m_entries, matches);
    return found == m_entries.end() ? std::nullopt : std::optional(*found);
}

void DesktopEntries::refresh() {
    const auto isCurrent = [](const auto& folder) {
        return QFileInfo(folder.first).lastModified() == folder.second;
    };
    if (!m_changed.isEmpty() &&
        std::all_of(m_changed.constKeyValueBegin(), m_changed.constKeyValueEnd(), isCurrent))
        return;
    m_changed.clear();
    m_entries.clear();
    QStringList seen;
    for (const QString& folder : m_folders)
        readFolder(folder, folder, seen);
}

// An ID in a folder hides the same one in those that follow, also when the entry says that it is deleted.
void DesktopEntries::readFolder(const QString& root, const QString& folder, QStringList& seen) {
    m_changed.insert(folder, QFileInfo(folder).lastModified());
    const QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("*.desktop")}, QDir::Files)) {
        const QString path = dir.filePath(name);
        QString id = QDir(root).relativeFilePath(path).chopped(8);
        id.replace(QLatin1Char('/'), QLatin1Char('-'));
        if (seen.contains(id))
            continue;
        seen << id;
        if (auto entry = readEntry(path, id))
            m_entries.push_back(std::move(*entry));
    }
    for (const QString& name : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks))
        readFolder(root, dir.filePath(name), seen);
}

std::optional<DesktopEntry> DesktopEntries::readEntry(const QString& path, const QString& id) const {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QHash<QString, QString> values;
    bool inGroup = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            if (inGroup)
                break; // the actions follow, with names of their own
            inGroup = line == QLatin1String("[Desktop Entry]");
        } else if (const qsizetype equals = line.indexOf(QLatin1Char('=')); inGroup && equals > 0) {
            values.insert(line.left(equals).trimmed(), unescaped(line.mid(equals + 1).trimmed()));
        }
    }
    if (values.value(QStringLiteral("Type")) != QLatin1String("Application") ||
        values.value(QStringLiteral("Hidden")) == QLatin1String("true"))
        return std::nullopt;
    const auto name =
        std::ranges::find_if(m_localeKeys, [&](const QString& key) { return values.contains(key); });
    return DesktopEntry{.id = id,
                        .name = name == m_localeKeys.end() ? id : values.value(*name),
                        .icon = values.value(QStringLiteral("Icon")),
                        .windowClass = values.value(QStringLiteral("StartupWMClass")),
                        .executable = executableOf(values.value(QStringLiteral("Exec")))};
}

} // namespace velmora
