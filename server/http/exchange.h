#pragma once

#include "accounts/identity.h"
#include "http/body_buffer.h"
#include "http/event_stream.h"
#include "http/request_head.h"

#include <Poco/JSON/Object.h>
#include <Poco/Net/HTTPResponse.h>

#include <chrono>
#include <cstdint>
#include <istream>
#include <map>
#include <optional>
#include <string>

namespace Poco::Net {
class SocketAddress;
} // namespace Poco::Net

namespace velmora::server {

class ClientSocket;
class Handler;
class HttpError;

/// One request and its reply, as the handlers see them. Used by one thread at a time.
class Exchange {
public:
    using Parameters = std::map<std::string, std::string>;

    /// `begun` is what came behind the head already.
    Exchange(ClientSocket& socket, RequestHead head, std::string begun, const HttpLimits& limits);

    [[nodiscard]] const std::string& method() const { return m_head.method(); }

    /// Decoded, without the query.
    [[nodiscard]] const std::string& path() const { return m_head.path(); }

    /// First value of a query key, empty if there is none.
    [[nodiscard]] std::string query(const std::string& key) const { return m_head.query(key); }

    /// A header's value, empty if there is none.
    [[nodiscard]] std::string header(const std::string& name) const { return m_head.header(name); }

    /// What stood in the route's `{name}` segments.
    [[nodiscard]] const Parameters& parameters() const { return m_parameters; }

    /// Who asks; only for routes that require a sign-in.
    [[nodiscard]] const Identity& identity() const { return m_identity.value(); }
    void setIdentity(Identity identity) { m_identity = std::move(identity); }

    [[nodiscard]] const Poco::Net::SocketAddress& peer() const;
    [[nodiscard]] const Poco::Net::SocketAddress& ownAddress() const;

    /// True once the peer has closed its side, the connection was cut, or the time allowed is over.
    [[nodiscard]] bool peerGone() const;

    /// A stream ends unless the handler ends within `time` or asks for more.
    void allow(std::chrono::milliseconds time);

    /// The body as it comes. Fails with 413 at once if its announced length is above `limit`.
    [[nodiscard]] std::istream& body(std::uint64_t limit);

    /// The whole body, at most `limit` bytes, else fails with 413.
    [[nodiscard]] std::string readBody(std::size_t limit);

    /// The body as a JSON object, else fails with 400.
    [[nodiscard]] Poco::JSON::Object::Ptr readJson();

    void sendJson(int status, const Poco::JSON::Object& object);
    void sendHtml(int status, const std::string& html, const std::string& contentSecurityPolicy);
    void sendEmpty(int status);
    void sendError(const HttpError& error);
    void setReplyHeader(const std::string& name, const std::string& value);
    [[nodiscard]] EventStream openEventStream();

    [[nodiscard]] bool replied() const { return m_replied; }

    /// The way of the request: who answers it, and its body as the reception gathers it.
    void lead(Handler& handler, Parameters parameters);
    [[nodiscard]] Handler* handler() const { return m_handler; }
    [[nodiscard]] const RequestHead& head() const { return m_head; }
    [[nodiscard]] BodyBuffer& bodyBuffer() { return m_body; }
    /// What is still to be sent as its reply: nothing of an event stream.
    [[nodiscard]] std::string takeReply() { return std::move(m_reply); }

private:
    void send(int status, const std::string& type, const std::string& text);

    ClientSocket& m_socket;
    const HttpLimits& m_limits;
    RequestHead m_head;
    BodyBuffer m_body;
    std::istream m_bodyStream{&m_body};
    Poco::Net::HTTPResponse m_response;
    std::string m_reply;
    bool m_replied = false;
    Pace::Clock::time_point m_deadline = Pace::Clock::time_point::max();
    Handler* m_handler = nullptr;
    Parameters m_parameters;
    std::optional<Identity> m_identity;
};

} // namespace velmora::server
