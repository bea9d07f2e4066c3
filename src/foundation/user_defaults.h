#pragma once

#include <QFileSystemWatcher>
#include <QJsonObject>
#include <QMutex>
#include <QObject>

#include <optional>

namespace velmora {

/// The user's key-value store: one JSON object in one file, which several processes may share.
///
/// Reading is safe from any thread and touches no disk. Writing belongs to the thread of the object, reaches
/// the disk before it returns, keeps the keys that other processes have written meanwhile, and never leaves
/// half a file. A file that can't be read as JSON is set aside with ".damaged" at its name before it would be
/// overwritten.
class UserDefaults : public QObject {
    Q_OBJECT

public:
    explicit UserDefaults(QString path, QObject* parent = nullptr);

    [[nodiscard]] bool contains(const QString& key) const;
    /// None when the key is absent or its value of another type.
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    [[nodiscard]] std::optional<qint64> integer(const QString& key) const;
    [[nodiscard]] std::optional<double> real(const QString& key) const; ///< integers count as well
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;

    void set(const QString& key, const QString& value) { write(key, value); }
    void set(const QString& key, qint64 value) { write(key, value); }
    void set(const QString& key, double value) { write(key, value); }
    void set(const QString& key, bool value) { write(key, value); }
    void remove(const QString& key) { write(key, QJsonValue(QJsonValue::Undefined)); }
    /// False when the last value written didn't reach the disk; this object gives it all the same.
    [[nodiscard]] bool isSaved() const { return m_isSaved; }

Q_SIGNALS:
    /// The key has a new value or none any more, by this process or another.
    void changed(const QString& key);

private:
    [[nodiscard]] QJsonValue value(const QString& key) const;
    void write(const QString& key, const QJsonValue& value);
    [[nodiscard]] bool save(const QJsonObject& values);
    void adopt(const QJsonObject& values);
    void reload();
    void watchFile();
    void clearUp() const;

    const QString m_path;
    mutable QMutex m_mutex; // guards m_values
    QJsonObject m_values;
    bool m_isSaved = true;
    QFileSystemWatcher m_watcher;
};

} // namespace velmora
