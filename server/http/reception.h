#pragma once

#include "http/connection.h"
#include "http/event_poll.h"
#include "http/http_limits.h"
#include "http/neighbours.h"
#include "http/workers.h"

#include <Poco/Net/ServerSocket.h>

#include <memory>
#include <mutex>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velmora::server {

class Dispatcher;
class HttpError;

/// Takes in all connections on one thread that never waits for any of them: reads their heads and small
/// bodies, sends their replies and drops what still comes. Only whole requests get to the workers, so a peer
/// that dawdles holds no thread; but for streams, each of which has a thread of its own.
class Reception {
public:
    Reception(Poco::Net::ServerSocket socket, const HttpLimits& limits, const Dispatcher& dispatcher);
    /// Cuts all connections and waits for the handlers; streams should have been told to end.
    ~Reception();
    Reception(const Reception&) = delete;
    Reception& operator=(const Reception&) = delete;

private:
    using Id = EventPoll::Id;
    using Role = Neighbours::Role;
    using Phase = Connection::Phase;
    /// What becomes of a request that comes back from a worker.
    enum class Next { Reply, Body, Heavy, Stream };

    void run(const std::stop_token& stop);
    void acceptAll();
    void take(int descriptor);
    void makeRoom();
    void onReady(Id id);
    void onOverdue(Id id);

    void readHead(Connection& connection);
    void begin(Connection& connection, std::size_t headSize);
    void gatherBody(Connection& connection);
    void sendReply(Connection& connection);
    void drain(Connection& connection);

    void submit(Connection& connection, Workers& workers, Next (Reception::*job)(Connection&));
    void startStream(Connection& connection);
    [[nodiscard]] Next workQuickly(Connection& connection);
    [[nodiscard]] Next answer(Connection& connection);
    void giveBack(Connection& connection, Next next);
    void takeBack();

    void refuse(Connection& connection, const HttpError& error);
    void wait(Connection& connection, Phase phase, Role role);
    void leave(Connection& connection);
    void close(Id id);
    void setDeadline(Connection& connection, Pace::Clock::time_point deadline);
    void clearDeadline(const Connection& connection);
    void arm(const Connection& connection, EventPoll::For what);

    HttpLimits m_limits;
    const Dispatcher& m_dispatcher;
    Poco::Net::ServerSocket m_socket;
    EventPoll m_poll;
    Neighbours m_neighbours;
    std::set<std::pair<Pace::Clock::time_point, Id>> m_deadlines;
    std::mutex m_mutex;
    std::vector<std::pair<Id, Next>> m_returned;
    Id m_lastId = 0;
    std::unordered_map<Id, std::unique_ptr<Connection>> m_connections;
    Workers m_quick;
    Workers m_heavy;
    std::jthread m_thread;
};

} // namespace velmora::server
