#pragma once

#include <QImage>
#include <QList>
#include <QStringList>
#include <QThread>

#include <memory>

namespace velmora::test {

/// A tray of the StatusNotifierItem kind on the session bus: watcher and host in one. It answers on a thread
/// of its own, for the program asks it and waits.
class FakeNotifierTray {
public:
    /// `withHost` false: the watcher runs, but nothing that shows icons.
    explicit FakeNotifierTray(bool withHost = true);
    ~FakeNotifierTray();
    FakeNotifierTray(const FakeNotifierTray&) = delete;
    FakeNotifierTray& operator=(const FakeNotifierTray&) = delete;

    void addHost();
    /// Waits until the program has asked for a host and has its answer.
    [[nodiscard]] bool hasAnswered() const;
    /// The bus names of the items that have registered themselves.
    [[nodiscard]] QStringList items() const;
    /// Calls a method of the only item as a host does, with the pointer's place.
    void call(const char* method) const;
    /// The only item's picture in each of its sizes.
    [[nodiscard]] QList<QImage> picture() const;
    /// The only item's tool tip.
    [[nodiscard]] QString toolTip() const;

private:
    class Watcher;

    [[nodiscard]] QVariant property(const char* name) const;

    QThread m_thread;
    std::unique_ptr<Watcher> m_watcher; ///< lives on the thread
};

} // namespace velmora::test
