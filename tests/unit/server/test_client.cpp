#include "test_client.h"

#include <Poco/JSON/Parser.h>
#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/StreamCopier.h>
#include <Poco/String.h>
#include <Poco/URI.h>

namespace velmora::server {

namespace {

constexpr auto boundary = "velmora-0C6B8C1C-6A0A-4C4E-9E0B-1F1B1E7D2A11";

std::string between(const std::string& text, const std::string& begin, const std::string& end) {
    const auto from = text.find(begin);
    if (from == std::string::npos) {
        throw std::runtime_error("not found: " + begin);
    }
    const auto start = from + begin.size();
    return text.substr(start, text.find(end, start) - start);
}

std::string dictationBody(const std::string& audio) {
    return std::string("--") + boundary +
           "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"a.m4a\"\r\n"
           "Content-Type: audio/m4a\r\n\r\n" +
           audio + "\r\n--" + boundary + "--\r\n";
}

std::string dictationType() {
    return std::string("multipart/form-data; boundary=") + boundary;
}

} // namespace

Poco::JSON::Object::Ptr Reply::json() const {
    return Poco::JSON::Parser().parse(body).extract<Poco::JSON::Object::Ptr>();
}

std::string Reply::code() const {
    return json()->getValue<std::string>("code");
}

std::string Reply::hiddenField(const std::string& name) const {
    return between(body, R"(type="hidden" name=")" + name + R"(" value=")", "\"");
}

std::string Reply::hiddenFields() const {
    std::string fields;
    const auto form = between(body, "<form", "</form>");
    const std::string begin = R"(type="hidden" name=")";
    for (auto at = form.find(begin); at != std::string::npos; at = form.find(begin, at + 1)) {
        const auto name = between(form.substr(at), begin, "\"");
        std::string value;
        Poco::URI::encode(between(form.substr(at), "value=\"", "\""), "&=+", value);
        fields += (fields.empty() ? "" : "&") + name + "=" + value;
    }
    return fields;
}

std::vector<SentEvent> Reply::events() const {
    std::vector<SentEvent> events;
    for (std::size_t begin = 0; begin < body.size();) {
        const auto end = body.find("\n\n", begin);
        if (end == std::string::npos) {
            throw std::runtime_error("unfinished event");
        }
        std::istringstream block(body.substr(begin, end - begin));
        begin = end + 2;
        // A comment: on a busy machine even a test waits long enough for one.
        if (block.peek() == ':') {
            continue;
        }
        std::string name;
        std::string data;
        std::getline(block, name);
        std::getline(block, data);
        if (!name.starts_with("event: ") || !data.starts_with("data: ") || block.peek() != EOF) {
            throw std::runtime_error("odd event: " + name);
        }
        events.push_back(
            {name.substr(7), Poco::JSON::Parser().parse(data.substr(6)).extract<Poco::JSON::Object::Ptr>()});
    }
    return events;
}

TestClient::TestClient(const std::string& address, const std::string& from)
    : m_address(address)
    , m_from(from, 0) {}

Reply TestClient::send(const std::string& method, const std::string& path, const std::string& body,
                       const Headers& headers) const {
    Poco::Net::HTTPClientSession session(connect());
    session.setTimeout(Poco::Timespan(30, 0));
    Poco::Net::HTTPRequest request(method, path, Poco::Net::HTTPRequest::HTTP_1_1);
    request.setHost(m_address.toString());
    for (const auto& [name, value] : headers) {
        request.set(name, value);
    }
    if (!body.empty() || method == "POST") {
        request.setContentLength64(static_cast<Poco::Int64>(body.size()));
    }
    session.sendRequest(request) << body;
    Poco::Net::HTTPResponse response;
    auto& stream = session.receiveResponse(response);
    Reply reply;
    reply.status = response.getStatus();
    for (const auto& [name, value] : response) {
        reply.headers[name] = value;
    }
    Poco::StreamCopier::copyToString(stream, reply.body);
    return reply;
}

Reply TestClient::sendAs(const Tokens& tokens, const std::string& method, const std::string& path,
                         const std::string& body, Headers headers) const {
    headers["Authorization"] = "Bearer " + tokens.access;
    return send(method, path, body, headers);
}

Reply TestClient::submitForm(const std::string& state, const std::string& fields) const {
    const auto page = send("GET", "/auth?source=app&state=" + state);
    return send("POST", "/auth",
                "state=" + state + "&form_token=" + page.hiddenField("form_token") + "&" + fields,
                {{"Content-Type", "application/x-www-form-urlencoded"}});
}

Tokens TestClient::signUp(const std::string& email) const {
    const auto reply =
        submitForm("0123456789abcdef", "action=create&email=" + email + "&password=long+enough");
    const auto parameters = callbackParameters(reply.body);
    return {parameters.at("token"), parameters.at("refresh")};
}

Reply TestClient::dictate(const Tokens& tokens, const std::string& audio) const {
    return sendAs(tokens, "POST", "/v1/dictate", dictationBody(audio),
                  {{"Content-Type", dictationType()}, {"Accept", "text/event-stream"}});
}

std::string TestClient::dictationRequest(const Tokens& tokens, const std::string& audio) const {
    const auto body = dictationBody(audio);
    return "POST /v1/dictate HTTP/1.1\r\nHost: " + m_address.toString() + "\r\nAuthorization: Bearer " +
           tokens.access + "\r\nContent-Type: " + dictationType() +
           "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

Poco::Net::StreamSocket TestClient::connect() const {
    Poco::Net::StreamSocket socket(Poco::Net::SocketAddress::IPv4);
    socket.impl()->bind(m_from);
    socket.connect(m_address);
    socket.setReceiveTimeout(Poco::Timespan(30, 0));
    return socket;
}

std::map<std::string, std::string> callbackParameters(const std::string& html) {
    const auto link = Poco::replace(between(html, "href=\"velmora://auth?", "\""), "&amp;", "&");
    std::map<std::string, std::string> parameters;
    for (const auto& [key, value] : Poco::URI("velmora://auth?" + link).getQueryParameters()) {
        parameters[key] = value;
    }
    return parameters;
}

} // namespace velmora::server
