#pragma once

#include <QByteArray>
#include <QObject>

#include <functional>
#include <memory>

struct pa_context;
struct pa_mainloop_api;
struct pa_operation;
struct pa_threaded_mainloop;

namespace velmora {

class PulseTimer;

/// The one connection to the sound server that everything of this folder shares, and the sound thread that
/// serves it. Connects at first use; when the server goes away it tries again every 500 ms.
///
/// Functions of libpulse may be called on the sound thread, or on any other thread that holds a Lock. The
/// main thread never waits longer than a second for a server that hangs, and only once until it answers
/// again.
class PulseConnection final : public QObject {
    Q_OBJECT

public:
    /// Keeps the sound thread from running callbacks. Not for use on the sound thread itself.
    class Lock {
    public:
        explicit Lock(PulseConnection& connection);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        pa_threaded_mainloop* m_loop;
    };

    /// `server` as libpulse writes it ("unix:/run/…/native"); empty for the one the desktop names.
    explicit PulseConnection(QByteArray server = {});
    ~PulseConnection() override;

    /// Starts connecting at once when there is no connection; does not wait. Needs the lock.
    void connectNow();
    /// Connects if need be and waits for the outcome; false when there is no server, or none that answers.
    /// Needs the lock.
    [[nodiscard]] bool waitUntilReady();
    /// Waits until `done`, which is looked at whenever wake() is called; false when that takes too long.
    /// Needs the lock, which others may hold in the meantime.
    [[nodiscard]] bool waitUntil(const std::function<bool()>& done);
    /// Connects if need be, starts an operation and waits for its end; false when it didn't come to one.
    /// Needs the lock.
    [[nodiscard]] bool run(const std::function<pa_operation*(pa_context*)>& start);

    /// Has whoever waits look again. On the sound thread.
    void wake();

    /// Whether the server can be talked to now. On the sound thread or with the lock.
    [[nodiscard]] bool isReady() const;
    /// None before the first use; another one after each loss. On the sound thread or with the lock.
    [[nodiscard]] pa_context* context() const { return m_context; }
    [[nodiscard]] pa_mainloop_api* api() const;

Q_SIGNALS:
    /// The server can be talked to, or no longer. Emitted on the sound thread: a receiver that lives on the
    /// main thread gets it there.
    void readyChanged(bool ready);

private:
    void openContext();
    void closeContext();
    void contextChanged();
    void askForSignOfLife();

    const QByteArray m_server;
    pa_threaded_mainloop* m_loop = nullptr;
    pa_context* m_context = nullptr;
    std::unique_ptr<PulseTimer> m_retry;
    bool m_started = false;
    bool m_announced = false;
    bool m_patient = true; // false from a wait in vain to the next sign of life
};

} // namespace velmora
