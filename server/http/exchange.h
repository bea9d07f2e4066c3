#pragma once

#include "accounts/identity.h"
#include "http/event_stream.h"

#include <Poco/JSON/Object.h>

#include <chrono>
#include <cstdint>
#include <istream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace Poco::Net {
class HTTPServerRequest;
class HTTPServerResponse;
class SocketAddress;
} // namespace Poco::Net

namespace velmora::server {

class ConnectionWatch;

/// One request and its reply, as the handlers see them. Lives on the connection's thread.
class Exchange {
public:
    using Parameters = std::map<std::string, std::string>;

    Exchange(Poco::Net::HTTPServerRequest& request, Poco::Net::HTTPServerResponse& response,
             ConnectionWatch& watch);

    [[nodiscard]] const std::string& method() const;

    /// Decoded, without the query.
    [[nodiscard]] const std::string& path() const { return m_path; }

    /// First value of a query key, empty if there is none.
    [[nodiscard]] std::string query(const std::string& key) const;

    /// A header's value, empty if there is none.
    [[nodiscard]] std::string header(const std::string& name) const;

    /// What stood in the route's `{name}` segments.
    [[nodiscard]] const Parameters& parameters() const { return m_parameters; }
    void setParameters(Parameters parameters) { m_parameters = std::move(parameters); }

    /// Who asks; only for routes that require a sign-in.
    [[nodiscard]] const Identity& identity() const { return m_identity.value(); }
    void setIdentity(Identity identity) { m_identity = std::move(identity); }

    [[nodiscard]] const Poco::Net::SocketAddress& peer() const;
    [[nodiscard]] const Poco::Net::SocketAddress& ownAddress() const;

    /// True once the peer has closed its side or the connection was cut.
    [[nodiscard]] bool peerGone() const;

    /// The connection is cut unless the handler ends within `time` or asks for more.
    void allow(std::chrono::milliseconds time);

    /// The body as it comes. Fails with 413 at once if its announced length is above `limit`, and with 411 if
    /// it announces none: so nothing behind it needs to count.
    [[nodiscard]] std::istream& body(std::uint64_t limit);

    /// The whole body, at most `limit` bytes, else fails with 413.
    [[nodiscard]] std::string readBody(std::size_t limit);

    /// The body as a JSON object, else fails with 400.
    [[nodiscard]] Poco::JSON::Object::Ptr readJson();

    void sendJson(int status, const Poco::JSON::Object& object);
    void sendHtml(int status, const std::string& html, const std::string& contentSecurityPolicy);
    void sendEmpty(int status);
    void setReplyHeader(const std::string& name, const std::string& value);
    [[nodiscard]] EventStream openEventStream();

    [[nodiscard]] bool replied() const;

    /// Reads and drops what the handler left of the body, within bounds: a socket closed over unread bytes is
    /// reset, and the peer might never see the reply.
    void drain();

private:
    std::istream& stream();
    void send(int status, const std::string& type, const std::string& text);

    Poco::Net::HTTPServerRequest& m_request;
    Poco::Net::HTTPServerResponse& m_response;
    ConnectionWatch& m_watch;
    std::string m_path;
    std::vector<std::pair<std::string, std::string>> m_query;
    Parameters m_parameters;
    std::optional<Identity> m_identity;
    std::istringstream m_noBody;
};

} // namespace velmora::server
