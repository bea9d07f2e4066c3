#include "foundation/user_defaults.h"

#include "foundation/json_value.h"
#include "foundation/log.h"
#include "foundation/private_file.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>
#include <QSet>

namespace velmora {
namespace {

constexpr int lockTimeoutMs = 2000;

/// Held by the one process that writes the file.
class WriteLock : public QLockFile {
public:
    explicit WriteLock(const QString& path)
        : QLockFile(path + QStringLiteral(".lock")) {
        setStaleLockTime(0); // by process id alone: a slow disk is no reason to break in
    }
};

/// The object in the file, an empty one when there is no file, none when it holds something else.
std::optional<QJsonObject> readObject(const QString& path) {
    QFile file(path);
    if (!file.exists())
        return QJsonObject();
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject())
        return std::nullopt;
    return document.object();
}

} // namespace

UserDefaults::UserDefaults(QString path, QObject* parent)
    : QObject(parent)
    , m_path(std::move(path))
    , m_values(readObject(m_path).value_or(QJsonObject())) {
    const QString folder = QFileInfo(m_path).path();
    makePrivateFolder(folder);
    clearUp();
    // Atomic writes replace the file, which only the folder's watch sees; editors that write in place, only
    // the file's.
    m_watcher.addPath(folder);
    watchFile();
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &UserDefaults::reload);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &UserDefaults::reload);
}

// Who writes holds the lock.
void UserDefaults::clearUp() const {
    WriteLock lock(m_path);
    if (lock.tryLock(0))
        removeUnfinished(m_path);
}

bool UserDefaults::contains(const QString& key) const {
    return !value(key).isUndefined();
}

std::optional<QString> UserDefaults::string(const QString& key) const {
    const QJsonValue stored = value(key);
    return stored.isString() ? std::optional(stored.toString()) : std::nullopt;
}

std::optional<qint64> UserDefaults::integer(const QString& key) const {
    return json::wholeNumber(value(key));
}

std::optional<double> UserDefaults::real(const QString& key) const {
    const QJsonValue stored = value(key);
    return stored.isDouble() ? std::optional(stored.toDouble()) : std::nullopt;
}

std::optional<bool> UserDefaults::boolean(const QString& key) const {
    const QJsonValue stored = value(key);
    return stored.isBool() ? std::optional(stored.toBool()) : std::nullopt;
}

QJsonValue UserDefaults::value(const QString& key) const {
    const QMutexLocker lock(&m_mutex);
    return m_values.value(key);
}

void UserDefaults::write(const QString& key, const QJsonValue& newValue) {
    WriteLock lock(m_path);
    if (!lock.tryLock(lockTimeoutMs))
        log(QStringLiteral("[Velmora] defaults: no lock on %1, writing anyway").arg(m_path));

    std::optional<QJsonObject> stored = readObject(m_path);
    if (!stored) {
        keepDamaged("defaults", m_path);
        const QMutexLocker guard(&m_mutex);
        stored = m_values;
    }
    if (newValue.isUndefined())
        stored->remove(key);
    else
        stored->insert(key, newValue);
    m_isSaved = save(*stored);
    lock.unlock();
    watchFile();
    adopt(*stored);
}

bool UserDefaults::save(const QJsonObject& values) {
    QSaveFile file(m_path);
    const QByteArray bytes = QJsonDocument(values).toJson();
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    log(QStringLiteral("[Velmora] defaults: can't write %1: %2").arg(m_path, file.errorString()));
    return false;
}

void UserDefaults::adopt(const QJsonObject& values) {
    QSet<QString> keys;
    {
        const QMutexLocker lock(&m_mutex);
        for (const QString& key : values.keys() + m_values.keys()) {
            if (m_values.value(key) != values.value(key))
                keys.insert(key);
        }
        m_values = values;
    }
    for (const QString& key : keys)
        Q_EMIT changed(key);
}

void UserDefaults::reload() {
    watchFile();
    // Half a file of an editor that writes in place isn't adopted; its next event brings the whole.
    if (const std::optional<QJsonObject> stored = readObject(m_path))
        adopt(*stored);
}

void UserDefaults::watchFile() {
    if (m_watcher.files().isEmpty() && QFile::exists(m_path))
        m_watcher.addPath(m_path);
}

} // namespace velmora
