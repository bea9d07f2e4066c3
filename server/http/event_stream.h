#pragma once

#include <Poco/JSON/Object.h>

#include <ostream>
#include <string>

namespace velmora::server {

/// Server-sent events, each on its way as soon as it is sent.
class EventStream {
public:
    explicit EventStream(std::ostream& stream)
        : m_stream(stream) {}

    /// False when the peer can't be reached any more.
    bool send(const std::string& event, const Poco::JSON::Object& data);

    /// A line that readers ignore; it keeps the connection from looking dead. False as for `send`.
    bool sendComment();

private:
    bool flush();

    std::ostream& m_stream;
};

} // namespace velmora::server
