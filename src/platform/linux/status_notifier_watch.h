#pragma once

#include <QDBusServiceWatcher>
#include <QObject>

namespace velmora {

/// Whether the session has a tray that takes icons over D-Bus: a StatusNotifierItem watcher with at least one
/// host.
class StatusNotifierWatch final : public QObject {
    Q_OBJECT

public:
    explicit StatusNotifierWatch(QObject* parent = nullptr);

    [[nodiscard]] bool isThere() const { return m_isThere; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void ask();

private:
    void set(bool there);

    QDBusServiceWatcher m_watcher;
    bool m_isThere = false;
};

} // namespace velmora
