#pragma once

#include <Poco/JSON/Object.h>

#include <chrono>
#include <string>

namespace velmora::server {

class ClientSocket;

/// Server-sent events, each on its way as soon as it is sent. The reply ends with this object.
class EventStream {
public:
    enum class Framing { Chunks, Bare };

    /// Sends the reply's head. `writeTime` is what one event has to find room on its way.
    EventStream(ClientSocket& socket, const std::string& head, Framing framing,
                std::chrono::milliseconds writeTime);
    ~EventStream();
    EventStream(const EventStream&) = delete;
    EventStream& operator=(const EventStream&) = delete;

    /// False when the peer can't be reached any more, or doesn't read.
    bool send(const std::string& event, const Poco::JSON::Object& data);

    /// A line that readers ignore; it keeps the connection from looking dead. False as for `send`.
    bool sendComment();

private:
    bool sendText(const std::string& text);
    bool write(const std::string& bytes);

    ClientSocket& m_socket;
    Framing m_framing;
    std::chrono::milliseconds m_writeTime;
    bool m_open = true;
};

} // namespace velmora::server
