#include "http/exchange.h"

#include "http/connection_watch.h"
#include "http/http_error.h"

#include <Poco/JSON/Parser.h>
#include <Poco/Net/HTTPServerRequestImpl.h>
#include <Poco/Net/HTTPServerResponse.h>
#include <Poco/Net/StreamSocket.h>
#include <Poco/URI.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <istream>

namespace velmora::server {

namespace {

constexpr std::size_t jsonLimit = 64 * 1024;
constexpr std::size_t jsonDepth = 16;
constexpr std::size_t drainLimit = 128 * 1024 * 1024;
constexpr std::chrono::seconds drainTime{5};

Poco::Net::StreamSocket& socketOf(Poco::Net::HTTPServerRequest& request) {
    return dynamic_cast<Poco::Net::HTTPServerRequestImpl&>(request).socket();
}

} // namespace

Exchange::Exchange(Poco::Net::HTTPServerRequest& request, Poco::Net::HTTPServerResponse& response,
                   ConnectionWatch& watch)
    : m_request(request)
    , m_response(response)
    , m_watch(watch) {
    try {
        const Poco::URI uri(request.getURI());
        m_path = uri.getPath();
        m_query = uri.getQueryParameters();
    } catch (const Poco::Exception&) {
        // An address that can't be read leads nowhere: its path stays empty, and no route has that.
        m_path.clear();
    }
}

const std::string& Exchange::method() const {
    return m_request.getMethod();
}

std::string Exchange::query(const std::string& key) const {
    const auto found = std::ranges::find(m_query, key, &std::pair<std::string, std::string>::first);
    return found == m_query.end() ? std::string() : found->second;
}

std::string Exchange::header(const std::string& name) const {
    return m_request.get(name, {});
}

const Poco::Net::SocketAddress& Exchange::peer() const {
    return m_request.clientAddress();
}

const Poco::Net::SocketAddress& Exchange::ownAddress() const {
    return m_request.serverAddress();
}

bool Exchange::peerGone() const {
    char byte = 0;
    const auto socket = socketOf(m_request).impl()->sockfd();
    const auto got = ::recv(socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    return got == 0 || (got < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR);
}

void Exchange::allow(std::chrono::milliseconds time) {
    m_watch.allow(socketOf(m_request), time);
}

std::istream& Exchange::body(std::uint64_t limit) {
    if (m_request.getChunkedTransferEncoding()) {
        throw HttpError(411, "length_required", "Запрос должен называть свою длину");
    }
    if (m_request.hasContentLength() && m_request.getContentLength64() > static_cast<Poco::Int64>(limit)) {
        throw HttpError(413, "too_large", "Слишком большой запрос");
    }
    return stream();
}

std::string Exchange::readBody(std::size_t limit) {
    auto& stream = body(limit);
    std::string text(limit + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() > limit) {
        throw HttpError(413, "too_large", "Слишком большой запрос");
    }
    return text;
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
    m_response.setStatusAndReason(static_cast<Poco::Net::HTTPResponse::HTTPStatus>(status));
    if (status != Poco::Net::HTTPResponse::HTTP_NO_CONTENT) {
        m_response.setContentLength(0);
    }
    m_response.send().flush();
}

void Exchange::setReplyHeader(const std::string& name, const std::string& value) {
    m_response.set(name, value);
}

EventStream Exchange::openEventStream() {
    m_response.setStatusAndReason(Poco::Net::HTTPResponse::HTTP_OK);
    m_response.setContentType("text/event-stream; charset=utf-8");
    m_response.set("Cache-Control", "no-store");
    // Tells a reverse proxy in front not to gather the events.
    m_response.set("X-Accel-Buffering", "no");
    m_response.setChunkedTransferEncoding(true);
    return EventStream(m_response.send());
}

bool Exchange::replied() const {
    return m_response.sent();
}

void Exchange::drain() {
    allow(drainTime);
    std::array<char, 16 * 1024> dropped{};
    std::size_t total = 0;
    for (auto& rest = stream(); rest.good() && total < drainLimit;) {
        rest.read(dropped.data(), dropped.size());
        total += static_cast<std::size_t>(rest.gcount());
    }
}

std::istream& Exchange::stream() {
    // Without a length there is no body, where the library would read until the peer hangs up.
    if (!m_request.hasContentLength() && !m_request.getChunkedTransferEncoding()) {
        return m_noBody;
    }
    return m_request.stream();
}

void Exchange::send(int status, const std::string& type, const std::string& text) {
    m_response.setStatusAndReason(static_cast<Poco::Net::HTTPResponse::HTTPStatus>(status));
    m_response.setContentType(type);
    m_response.set("Cache-Control", "no-store");
    m_response.set("X-Content-Type-Options", "nosniff");
    m_response.sendBuffer(text.data(), text.size());
}

} // namespace velmora::server
