#include "http/connection_watch.h"

#include <Poco/Exception.h>
#include <Poco/Net/StreamSocket.h>

#include <algorithm>
#include <utility>

namespace velmora::server {

struct ConnectionWatch::Entry {
    Poco::Net::StreamSocket socket;
    Clock::time_point deadline;

    void cut() {
        try {
            socket.shutdown();
        } catch (const Poco::Exception&) {
            // The peer was quicker.
        }
    }
};

ConnectionWatch::ConnectionWatch()
    : m_thread([this](const std::stop_token& stop) { run(stop); }) {}

ConnectionWatch::~ConnectionWatch() = default;

void ConnectionWatch::add(const Poco::Net::StreamSocket& socket, std::chrono::milliseconds time) {
    const std::scoped_lock lock(m_mutex);
    Entry entry{socket, Clock::now() + time};
    if (m_closed) {
        entry.cut();
        return;
    }
    m_entries.insert_or_assign(socket.impl(), std::move(entry));
    m_wake.notify_one();
}

void ConnectionWatch::allow(const Poco::Net::StreamSocket& socket, std::chrono::milliseconds time) {
    const std::scoped_lock lock(m_mutex);
    if (const auto found = m_entries.find(socket.impl()); found != m_entries.end()) {
        found->second.deadline = Clock::now() + time;
        m_wake.notify_one();
    }
}

void ConnectionWatch::forget(const Poco::Net::StreamSocket& socket) {
    const std::scoped_lock lock(m_mutex);
    m_entries.erase(socket.impl());
}

void ConnectionWatch::cutAll() {
    const std::scoped_lock lock(m_mutex);
    m_closed = true;
    for (auto& [key, entry] : m_entries) {
        entry.cut();
    }
}

void ConnectionWatch::run(const std::stop_token& stop) {
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        const auto now = Clock::now();
        auto next = now + std::chrono::hours(1);
        for (auto& [key, entry] : m_entries) {
            if (entry.deadline <= now) {
                entry.cut();
                // Its thread forgets it soon; until then there is nothing more to cut.
                entry.deadline = Clock::time_point::max();
            }
            next = std::min(next, entry.deadline);
        }
        // The predicate is never true of itself: each notification recomputes the next deadline.
        m_wake.wait_until(lock, stop, next, [woken = false]() mutable { return std::exchange(woken, true); });
    }
}

} // namespace velmora::server
