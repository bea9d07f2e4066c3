#include "http/exchange.h"

#include "http/client_socket.h"
#include "http/http_error.h"
#include "http/reply.h"

#include <Poco/JSON/Parser.h>

#include <sstream>

namespace velmora::server {

namespace {

constexpr std::size_t jsonLimit = 64 * 1024;
constexpr std::size_t jsonDepth = 16;

} // namespace

Exchange::Exchange(ClientSocket& socket, RequestHead head, std::string begun, const HttpLimits& limits)
    : m_socket(socket)
    , m_limits(limits)
    , m_head(std::move(head))
    , m_body(socket, m_head.bodyLength(), std::move(begun), limits) {}

const Poco::Net::SocketAddress& Exchange::peer() const {
    return m_socket.peer();
}

const Poco::Net::SocketAddress& Exchange::ownAddress() const {
    return m_socket.ownAddress();
}

bool Exchange::peerGone() const {
    return m_socket.peerGone() || Pace::Clock::now() >= m_deadline;
}

void Exchange::allow(std::chrono::milliseconds time) {
    m_deadline = Pace::Clock::now() + time;
    m_body.setDeadline(m_deadline);
}

std::istream& Exchange::body(std::uint64_t limit) {
    if (m_head.bodyLength() > limit) {
        throw HttpError::tooLarge();
    }
    if (m_head.expectsContinue() && !m_body.isGathered()) {
        static_cast<void>(m_socket.send(continueLine));
    }
    m_body.startStream();
    return m_bodyStream;
}

std::string Exchange::readBody(std::size_t limit) {
    auto& stream = body(limit);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Poco::JSON::Object::Ptr Exchange::readJson() {
    try {
        Poco::JSON::Parser parser;
        parser.setDepth(jsonDepth);
        return parser.parse(readBody(jsonLimit)).extract<Poco::JSON::Object::Ptr>();
    } catch (const Poco::Exception&) {
        throw HttpError(400, "bad_json", "Тело запроса должно быть объектом JSON");
    }
}

void Exchange::sendJson(int status, const Poco::JSON::Object& object) {
    std::ostringstream text;
    object.stringify(text);
    send(status, "application/json; charset=utf-8", text.str());
}

void Exchange::sendHtml(int status, const std::string& html, const std::string& contentSecurityPolicy) {
    m_response.set("Content-Security-Policy", contentSecurityPolicy);
    // Not "no-referrer": with that, browsers send the form with "Origin: null".
    m_response.set("Referrer-Policy", "same-origin");
    m_response.set("X-Frame-Options", "DENY");
    send(status, "text/html; charset=utf-8", html);
}

void Exchange::sendEmpty(int status) {
    if (status != Poco::Net::HTTPResponse::HTTP_NO_CONTENT) {
        m_response.setContentLength(0);
    }
    m_reply = wireForm(status, m_response);
    m_replied = true;
}

void Exchange::sendError(const HttpError& error) {
    m_reply = wireForm(error, m_response);
    m_replied = true;
}

void Exchange::setReplyHeader(const std::string& name, const std::string& value) {
    m_response.set(name, value);
}

EventStream Exchange::openEventStream() {
    m_response.setContentType("text/event-stream; charset=utf-8");
    m_response.set("Cache-Control", "no-store");
    // Tells a reverse proxy in front not to gather the events.
    m_response.set("X-Accel-Buffering", "no");
    const bool chunks = m_head.version() != Poco::Net::HTTPMessage::HTTP_1_0;
    m_response.setChunkedTransferEncoding(chunks);
    m_replied = true;
    return {m_socket, wireForm(Poco::Net::HTTPResponse::HTTP_OK, m_response),
            chunks ? EventStream::Framing::Chunks : EventStream::Framing::Bare, m_limits.write};
}

void Exchange::lead(Handler& handler, Parameters parameters) {
    m_handler = &handler;
    m_parameters = std::move(parameters);
}

void Exchange::send(int status, const std::string& type, const std::string& text) {
    m_reply = wireForm(status, m_response, type, text);
    m_replied = true;
}

} // namespace velmora::server
