#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <stop_token>
#include <thread>

namespace Poco::Net {
class StreamSocket;
}

namespace velmora::server {

/// Cuts connections that outlive what they were allowed: a read timeout alone would let a client that sends
/// a byte now and then hold a thread for ever. All methods may be called from any thread.
class ConnectionWatch {
public:
    ConnectionWatch();
    ~ConnectionWatch();
    ConnectionWatch(const ConnectionWatch&) = delete;
    ConnectionWatch& operator=(const ConnectionWatch&) = delete;

    /// Begins to watch a socket; it is cut after `time` unless it is allowed more or forgotten.
    void add(const Poco::Net::StreamSocket& socket, std::chrono::milliseconds time);

    /// Replaces what is left for the socket by `time`, counted from now. No effect on an unknown socket.
    void allow(const Poco::Net::StreamSocket& socket, std::chrono::milliseconds time);

    void forget(const Poco::Net::StreamSocket& socket);

    /// Cuts all connections, and from then on each new one at once.
    void cutAll();

private:
    using Clock = std::chrono::steady_clock;
    struct Entry;

    void run(const std::stop_token& stop);

    std::mutex m_mutex;
    std::condition_variable_any m_wake;
    std::map<const void*, Entry> m_entries;
    bool m_closed = false;
    std::jthread m_thread;
};

} // namespace velmora::server
