#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace velmora {

/// What an application says of itself in its desktop file.
struct DesktopEntry {
    QString id;   ///< without ".desktop"
    QString name; ///< in the user's language where there is one
    QString icon;
    QString windowClass; ///< StartupWMClass
    QString executable;  ///< the program's name in Exec, without its folder

    bool operator==(const DesktopEntry&) const = default;
};

/// The applications that are installed, read when first asked for and again when a folder has changed.
class DesktopEntries {
public:
    /// Folders in falling precedence; `locale` as in "ru_RU".
    explicit DesktopEntries(QStringList folders = standardFolders(), const QString& locale = systemLocale());

    [[nodiscard]] static QStringList standardFolders();
    [[nodiscard]] static QString systemLocale();

    [[nodiscard]] std::optional<DesktopEntry> withID(const QString& id);
    /// The application of a window of that class or (after that) instance name.
    [[nodiscard]] std::optional<DesktopEntry> ofWindow(const QString& className, const QString& instance);
    /// By the name of the program's file.
    [[nodiscard]] std::optional<DesktopEntry> ofExecutable(const QString& name);

private:
    using Matches = std::function<bool(const DesktopEntry&)>;

    void refresh();
    void readFolder(const QString& root, const QString& folder, QStringList& seen);
    std::optional<DesktopEntry> readEntry(const QString& path, const QString& id) const;
    std::optional<DesktopEntry> find(const Matches& matches) const;

    QStringList m_folders;
    QStringList m_localeKeys; // the keys of Name, best first
    std::vector<DesktopEntry> m_entries;
    QHash<QString, QDateTime> m_changed; // of each folder that was read, those below included
};

} // namespace velmora
