#pragma once

#include "samples.h"

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace velmora::bench {

/// A backend on a loopback port that answers each dictation by a script and notes the times. It runs on
/// threads of its own, so that what it sees doesn't depend on the main loop.
class ScriptedServer {
public:
    /// Bytes that go out together, so long after the step before them.
    struct Step {
        std::chrono::milliseconds pause;
        QByteArray bytes;
    };
    /// One dictation as it was seen here.
    struct Exchange {
        Clock::time_point firstByte; ///< of the request
        QByteArray request;
        std::vector<Clock::time_point> sent; ///< a step each
    };

    ScriptedServer();
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    [[nodiscard]] quint16 port() const { return m_port; }
    /// For the dictations from now on.
    void setScript(std::vector<Step> script);
    /// The last dictation, once its script is at the end; none a second time.
    [[nodiscard]] std::optional<Exchange> takeExchange();

private:
    void acceptAll(const std::stop_token& stop);
    void serve(const std::stop_token& stop, int connection);
    void answer(int connection, Exchange exchange);

    int m_listener = -1;
    quint16 m_port = 0;
    std::mutex m_mutex; // guards the two
    std::vector<Step> m_script;
    std::optional<Exchange> m_exchange;
    std::jthread m_thread;
};

} // namespace velmora::bench
