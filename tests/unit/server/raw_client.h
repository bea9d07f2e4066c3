#pragma once

#include "test_client.h"

#include <Poco/Net/StreamSocket.h>

#include <chrono>
#include <functional>
#include <string>

namespace velmora::server {

/// How long a test waits for what should come at once.
constexpr std::chrono::seconds patience{30};

/// A client that sends what it likes when it likes, from any of the machine's own addresses.
class RawClient {
public:
    enum class Reading { Usual, Reluctant };

    /// A reluctant one has hardly room for what it doesn't read.
    explicit RawClient(const std::string& server, const std::string& from = "127.0.0.1",
                       Reading reading = Reading::Usual);

    /// False once the server has closed the connection.
    bool send(const std::string& bytes);

    /// Sends the bytes one by one until the server replies; false if all are sent or patience is over.
    bool dripUntilReply(const std::string& bytes, std::chrono::milliseconds interval);

    /// Whether the server has sent something or closed within this time.
    [[nodiscard]] bool hasReply(std::chrono::milliseconds time = {});

    /// What comes until this text or the end, which stays out of `reply`.
    [[nodiscard]] std::string readUntil(const std::string& text);

    /// The reply, read to its end.
    [[nodiscard]] Reply reply();

    /// Waits until the server has nothing more to do with the connection: bytes sent to it are answered by a
    /// reset.
    [[nodiscard]] bool isAbandoned();

private:
    Poco::Net::StreamSocket m_socket;
};

/// The text made this long with blanks.
[[nodiscard]] std::string padded(std::string text, std::size_t size);

/// Whether the condition comes true in patience.
[[nodiscard]] bool comesTrue(const std::function<bool()>& condition);

} // namespace velmora::server
