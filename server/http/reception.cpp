#include "http/reception.h"

#include "app/log.h"
#include "http/client_network.h"
#include "http/dispatcher.h"
#include "http/handler.h"
#include "http/http_error.h"
#include "http/reply.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace velmora::server {

namespace {

using Clock = Pace::Clock;

constexpr EventPoll::Id listenerId = 0;
/// More than cores, for some wait for the database.
constexpr unsigned quickThreads = 8;
/// Passwords are hashed two at a time; the others are for those who are made to wait for having guessed.
constexpr unsigned heavyThreads = 20;
/// What one connection gets before it is the others' turn.
constexpr int readsInARow = 16;
constexpr int acceptsInARow = 64;
/// When the system has no descriptor left.
constexpr std::chrono::milliseconds acceptPause{100};

} // namespace

Reception::Reception(Poco::Net::ServerSocket socket, const HttpLimits& limits, const Dispatcher& dispatcher)
    : m_limits(limits)
    , m_dispatcher(dispatcher)
    , m_socket(std::move(socket))
    , m_quick(quickThreads)
    , m_heavy(heavyThreads) {
    m_socket.setBlocking(false);
    m_poll.add(m_socket.impl()->sockfd(), listenerId);
    m_poll.arm(m_socket.impl()->sockfd(), listenerId, EventPoll::For::Reading);
    m_thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

Reception::~Reception() {
    m_thread.request_stop();
    m_poll.wake();
    m_thread.join();
    for (const auto& [id, connection] : m_connections) {
        connection->socket.cut();
    }
}

void Reception::run(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        const auto deadline =
            m_deadlines.empty() ? Clock::now() + std::chrono::hours(1) : m_deadlines.begin()->first;
        m_poll.wait(deadline, [this](Id id) { onReady(id); });
        takeBack();
        while (!m_deadlines.empty() && m_deadlines.begin()->first <= Clock::now()) {
            onOverdue(m_deadlines.begin()->second);
        }
    }
}

void Reception::acceptAll() {
    for (int i = 0; i < acceptsInARow; ++i) {
        const int descriptor =
            ::accept4(m_socket.impl()->sockfd(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (descriptor >= 0) {
            take(descriptor);
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            break;
        } else if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
            // Without a descriptor it isn't said whether there is another connection; that the first is there
            // is why we are here.
            if (i > 0) {
                break;
            }
            log("no more connections can be taken just now");
            if (const auto first = m_neighbours.firstToGo()) {
                close(*first);
            }
            m_deadlines.emplace(Clock::now() + acceptPause, listenerId);
            return;
        }
    }
    m_poll.arm(m_socket.impl()->sockfd(), listenerId, EventPoll::For::Reading);
}

void Reception::take(int descriptor) {
    std::unique_ptr<Connection> made;
    try {
        made = std::make_unique<Connection>(++m_lastId, descriptor, m_limits);
        m_poll.add(made->socket.descriptor(), made->id);
    } catch (const std::exception&) {
        // Gone before it was looked at, or one too many for the system.
        return;
    }
    auto& connection = *made;
    m_connections.emplace(connection.id, std::move(made));
    m_neighbours.add(connection.id, clientNetwork(connection.socket.peer().host()));
    setDeadline(connection, Clock::now() + m_limits.header);
    arm(connection, EventPoll::For::Reading);
    wait(connection, Phase::Head, Role::Waiting);
    makeRoom();
}

void Reception::makeRoom() {
    if (m_connections.size() <= m_limits.connections) {
        return;
    }
    if (const auto first = m_neighbours.firstToGo()) {
        auto& connection = *m_connections.at(*first);
        const bool newcomer = *first == m_lastId;
        if (connection.phase == Phase::Head || connection.phase == Phase::Body) {
            refuse(connection, HttpError::busy());
        }
        // A newcomer stays until the next one, so that its reply reaches it.
        if (!newcomer && m_connections.contains(*first)) {
            close(*first);
        }
    }
}

void Reception::onReady(Id id) {
    if (id == listenerId) {
        acceptAll();
        return;
    }
    const auto found = m_connections.find(id);
    if (found == m_connections.end()) {
        // Closed by what happened to another one in the meantime.
        return;
    }
    auto& connection = *found->second;
    switch (connection.phase) {
    case Phase::Head:
        readHead(connection);
        break;
    case Phase::Body:
        gatherBody(connection);
        break;
    case Phase::Away:
        break;
    case Phase::Reply:
        sendReply(connection);
        break;
    case Phase::Drain:
        drain(connection);
        break;
    }
}

void Reception::onOverdue(Id id) {
    if (id == listenerId) {
        m_deadlines.erase(m_deadlines.begin());
        m_poll.arm(m_socket.impl()->sockfd(), listenerId, EventPoll::For::Reading);
        return;
    }
    auto& connection = *m_connections.at(id);
    if (connection.phase == Phase::Head || connection.phase == Phase::Body) {
        refuse(connection, HttpError::tooSlow());
    } else {
        close(id);
    }
}

void Reception::readHead(Connection& connection) {
    std::array<char, 16 * 1024> bytes{};
    for (;;) {
        const auto got = connection.socket.receive(bytes);
        if (!got) {
            arm(connection, EventPoll::For::Reading);
            return;
        }
        if (*got == 0) {
            close(connection.id);
            return;
        }
        const auto before = connection.head.size();
        connection.head.append(bytes.data(), *got);
        const auto end = endOfHead(connection.head, before);
        if (end.value_or(connection.head.size()) > m_limits.headerSize) {
            refuse(connection, HttpError(431, "header_too_large", "Слишком большой заголовок запроса"));
            return;
        }
        if (end) {
            begin(connection, *end);
            return;
        }
    }
}

void Reception::begin(Connection& connection, std::size_t headSize) {
    try {
        connection.exchange.emplace(connection.socket, RequestHead(connection.head.substr(0, headSize)),
                                    connection.head.substr(headSize), m_limits);
    } catch (const HttpError& error) {
        refuse(connection, error);
        return;
    }
    submit(connection, m_quick, &Reception::workQuickly);
}

void Reception::gatherBody(Connection& connection) {
    auto& body = connection.exchange->bodyBuffer();
    if (!body.gather()) {
        close(connection.id);
    } else if (body.isGathered()) {
        submit(connection, m_quick, &Reception::workQuickly);
    } else {
        setDeadline(connection, body.pace().deadline());
        arm(connection, EventPoll::For::Reading);
    }
}

void Reception::sendReply(Connection& connection) {
    if (!connection.sendReply()) {
        close(connection.id);
    } else if (connection.unsent.empty()) {
        connection.socket.endSending();
        connection.phase = Phase::Drain;
        setDeadline(connection, Clock::now() + m_limits.drain);
        drain(connection);
    } else {
        connection.phase = Phase::Reply;
        setDeadline(connection, connection.pace.deadline());
        arm(connection, EventPoll::For::Writing);
    }
}

void Reception::drain(Connection& connection) {
    std::array<char, 32 * 1024> dropped; // NOLINT: never read
    for (int i = 0; i < readsInARow; ++i) {
        const auto got = connection.socket.receive(dropped);
        if (!got) {
            break;
        }
        if (*got == 0) {
            close(connection.id);
            return;
        }
    }
    arm(connection, EventPoll::For::Reading);
}

void Reception::submit(Connection& connection, Workers& workers, Next (Reception::*job)(Connection&)) {
    connection.phase = Phase::Away;
    m_neighbours.setRole(connection.id, Role::Working);
    clearDeadline(connection);
    workers.add([this, &connection, job] { giveBack(connection, (this->*job)(connection)); });
}

void Reception::startStream(Connection& connection) {
    m_neighbours.setRole(connection.id, Role::Streaming);
    if (m_neighbours.count(Role::Streaming) > m_limits.streams ||
        m_neighbours.countBeside(connection.id, Role::Streaming) > m_limits.streamsPerAddress) {
        refuse(connection, HttpError::busy());
        return;
    }
    try {
        connection.thread = std::jthread([this, &connection] { giveBack(connection, answer(connection)); });
    } catch (const std::system_error&) {
        log("no more threads can be made just now");
        refuse(connection, HttpError::busy());
    }
}

Reception::Next Reception::workQuickly(Connection& connection) {
    auto& exchange = *connection.exchange;
    if (!exchange.handler()) {
        m_dispatcher.admit(exchange);
    }
    if (exchange.replied()) {
        return Next::Reply;
    }
    if (exchange.handler()->work() == Work::Stream) {
        return Next::Stream;
    }
    if (!exchange.bodyBuffer().isGathered()) {
        return Next::Body;
    }
    return exchange.handler()->work() == Work::Heavy ? Next::Heavy : answer(connection);
}

Reception::Next Reception::answer(Connection& connection) {
    m_dispatcher.answer(*connection.exchange);
    return Next::Reply;
}

void Reception::giveBack(Connection& connection, Next next) {
    const auto id = connection.id;
    {
        const std::scoped_lock lock(m_mutex);
        m_returned.emplace_back(id, next);
    }
    m_poll.wake();
}

void Reception::takeBack() {
    std::vector<std::pair<Id, Next>> returned;
    {
        const std::scoped_lock lock(m_mutex);
        returned.swap(m_returned);
    }
    for (const auto& [id, next] : returned) {
        auto& connection = *m_connections.at(id);
        switch (next) {
        case Next::Reply:
            if (connection.thread.joinable()) {
                connection.thread.join();
            }
            connection.setReply(connection.exchange->takeReply());
            leave(connection);
            break;
        case Next::Body:
            if (connection.exchange->head().expectsContinue()) {
                static_cast<void>(connection.socket.send(continueLine));
            }
            setDeadline(connection, connection.exchange->bodyBuffer().pace().deadline());
            arm(connection, EventPoll::For::Reading);
            wait(connection, Phase::Body, Role::Waiting);
            break;
        case Next::Heavy:
            submit(connection, m_heavy, &Reception::answer);
            break;
        case Next::Stream:
            startStream(connection);
            break;
        }
    }
}

void Reception::refuse(Connection& connection, const HttpError& error) {
    Poco::Net::HTTPResponse response;
    connection.setReply(wireForm(error, response));
    leave(connection);
}

void Reception::wait(Connection& connection, Phase phase, Role role) {
    connection.phase = phase;
    m_neighbours.setRole(connection.id, role);
    if (m_neighbours.countBeside(connection.id, role) > m_limits.waitingPerAddress) {
        refuse(*m_connections.at(m_neighbours.oldestBeside(connection.id, role)), HttpError::busy());
    }
}

void Reception::leave(Connection& connection) {
    connection.pace = Pace(m_limits);
    m_neighbours.setRole(connection.id, Role::Leaving);
    if (m_neighbours.countBeside(connection.id, Role::Leaving) > m_limits.waitingPerAddress) {
        close(m_neighbours.oldestBeside(connection.id, Role::Leaving));
    }
    sendReply(connection);
}

void Reception::close(Id id) {
    clearDeadline(*m_connections.at(id));
    m_neighbours.remove(id);
    m_connections.erase(id);
}

void Reception::setDeadline(Connection& connection, Clock::time_point deadline) {
    clearDeadline(connection);
    connection.deadline = deadline;
    m_deadlines.emplace(deadline, connection.id);
}

void Reception::clearDeadline(const Connection& connection) {
    m_deadlines.erase({connection.deadline, connection.id});
}

void Reception::arm(const Connection& connection, EventPoll::For what) {
    m_poll.arm(connection.socket.descriptor(), connection.id, what);
}

} // namespace velmora::server
