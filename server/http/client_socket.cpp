#include "http/client_socket.h"

#include <Poco/Net/StreamSocketImpl.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace velmora::server {

namespace {

bool isForLater(int error) {
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

} // namespace

ClientSocket::ClientSocket(int descriptor)
    : m_socket(new Poco::Net::StreamSocketImpl(descriptor))
    , m_peer(m_socket.peerAddress())
    , m_own(m_socket.address()) {
    // An event that waits for the last one's receipt comes late.
    m_socket.setNoDelay(true);
}

std::optional<std::size_t> ClientSocket::receive(std::span<char> bytes) {
    const auto got = ::recv(descriptor(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (got < 0) {
        return isForLater(errno) ? std::nullopt : std::optional<std::size_t>(0);
    }
    return static_cast<std::size_t>(got);
}

std::optional<std::size_t> ClientSocket::receive(std::span<char> bytes, Moment until) {
    for (;;) {
        if (const auto got = receive(bytes)) {
            return got;
        }
        if (!wait(POLLIN, until)) {
            return std::nullopt;
        }
    }
}

std::optional<std::size_t> ClientSocket::send(std::string_view bytes) {
    const auto went = ::send(descriptor(), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (went < 0) {
        return isForLater(errno) ? std::nullopt : std::optional<std::size_t>(0);
    }
    return static_cast<std::size_t>(went);
}

bool ClientSocket::sendAll(std::string_view bytes, Moment until) {
    while (!bytes.empty()) {
        if (const auto went = send(bytes)) {
            if (*went == 0) {
                return false;
            }
            bytes.remove_prefix(*went);
        } else if (!wait(POLLOUT, until)) {
            return false;
        }
    }
    return true;
}

bool ClientSocket::peerGone() const {
    char byte = 0;
    const auto got = ::recv(descriptor(), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    return got == 0 || (got < 0 && !isForLater(errno));
}

void ClientSocket::endSending() {
    ::shutdown(descriptor(), SHUT_WR);
}

void ClientSocket::cut() {
    ::shutdown(descriptor(), SHUT_RDWR);
}

bool ClientSocket::wait(short event, Moment until) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    if (left <= std::chrono::milliseconds::zero()) {
        return false;
    }
    pollfd descriptors{descriptor(), event, 0};
    // Whatever ends the wait, the caller tries again and comes back with what is left of the time.
    ::poll(&descriptors, 1, static_cast<int>(std::min<std::int64_t>(left.count(), 60'000)));
    return true;
}

} // namespace velmora::server
