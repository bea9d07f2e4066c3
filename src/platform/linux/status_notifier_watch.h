#pragma once

#include <QDBusServiceWatcher>
#include <QObject>

#include <optional>

namespace velmora {

/// Whether the session has a tray that takes icons over D-Bus: a StatusNotifierItem watcher with at least one
/// host.
class StatusNotifierWatch final : public QObject {
    Q_OBJECT

public:
    explicit StatusNotifierWatch(QObject* parent = nullptr);

    [[nodiscard]] bool isThere() const { return m_isThere.value_or(false); }
    /// False until the session has answered for the first time.
    [[nodiscard]] bool isKnown() const { return m_isThere.has_value(); }

Q_SIGNALS:
    /// Also when it has become known.
    void changed();

private Q_SLOTS:
    void ask();

private:
    void set(bool there);

    QDBusServiceWatcher m_watcher;
    std::optional<bool> m_isThere;
};

} // namespace velmora
