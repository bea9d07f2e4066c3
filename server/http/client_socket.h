#pragma once

#include <Poco/Net/SocketAddress.h>
#include <Poco/Net/StreamSocket.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace velmora::server {

/// A client's socket. Nothing here waits unless it is given a moment to wait for.
class ClientSocket {
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// Takes over an accepted descriptor that doesn't block. Fails with Poco::Exception if the peer has left.
    explicit ClientSocket(int descriptor);

    /// How many bytes came: none if there is nothing yet, zero at the end.
    [[nodiscard]] std::optional<std::size_t> receive(std::span<char> bytes);
    /// The same, but waits; none means that `until` has come.
    [[nodiscard]] std::optional<std::size_t> receive(std::span<char> bytes, Moment until);

    /// How many bytes went: none if there is no room yet, zero if the peer can't be reached.
    [[nodiscard]] std::optional<std::size_t> send(std::string_view bytes);
    /// Waits until all bytes went; false if the peer can't be reached or `until` has come.
    [[nodiscard]] bool sendAll(std::string_view bytes, Moment until);

    /// True once the peer has closed its side or the connection was cut.
    [[nodiscard]] bool peerGone() const;

    /// The peer sees the end; it can still send.
    void endSending();

    /// Ends both ways. May be called while another thread waits here, which then sees the end.
    void cut();

    [[nodiscard]] int descriptor() const { return m_socket.impl()->sockfd(); }
    [[nodiscard]] const Poco::Net::SocketAddress& peer() const { return m_peer; }
    [[nodiscard]] const Poco::Net::SocketAddress& ownAddress() const { return m_own; }

private:
    /// False if `until` has come; true when it is worth another try.
    [[nodiscard]] bool wait(short event, Moment until) const;

    Poco::Net::StreamSocket m_socket;
    Poco::Net::SocketAddress m_peer;
    Poco::Net::SocketAddress m_own;
};

} // namespace velmora::server
