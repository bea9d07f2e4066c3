#pragma once

#include <Poco/JSON/Object.h>
#include <Poco/Net/SocketAddress.h>
#include <Poco/Net/StreamSocket.h>

#include <map>
#include <string>
#include <vector>

namespace velmora::server {

/// One event of a text/event-stream.
struct SentEvent {
    std::string name;
    Poco::JSON::Object::Ptr data;
};

struct Reply {
    int status = 0;
    std::map<std::string, std::string> headers;
    std::string body;

    [[nodiscard]] Poco::JSON::Object::Ptr json() const;
    [[nodiscard]] std::string code() const;

    /// What the page's first hidden field of that name holds; and all hidden fields of its first form as a
    /// browser would send them.
    [[nodiscard]] std::string hiddenField(const std::string& name) const;
    [[nodiscard]] std::string hiddenFields() const;

    /// The body's blocks, separated by two line feeds. Comments are passed over; fails on a block that is
    /// anything else than "event:" and "data:".
    [[nodiscard]] std::vector<SentEvent> events() const;
};

struct Tokens {
    std::string access;
    std::string refresh;
};

/// A client that knows the wire format and nothing of the server's code.
class TestClient {
public:
    using Headers = std::map<std::string, std::string>;

    /// Connects from any of the machine's own addresses.
    explicit TestClient(const std::string& address, const std::string& from = "127.0.0.1");

    [[nodiscard]] Reply send(const std::string& method, const std::string& path, const std::string& body = {},
                             const Headers& headers = {}) const;

    [[nodiscard]] Reply sendAs(const Tokens& tokens, const std::string& method, const std::string& path,
                               const std::string& body = {}, Headers headers = {}) const;

    /// Loads the sign-in page for the state and sends its form with the fields.
    [[nodiscard]] Reply submitForm(const std::string& state, const std::string& fields) const;

    /// Creates an account by the form.
    [[nodiscard]] Tokens signUp(const std::string& email) const;

    [[nodiscard]] Reply dictate(const Tokens& tokens, const std::string& audio) const;

    /// The head and body of a dictation request as they go over the wire.
    [[nodiscard]] std::string dictationRequest(const Tokens& tokens, const std::string& audio) const;

    [[nodiscard]] Poco::Net::StreamSocket connect() const;

private:
    Poco::Net::SocketAddress m_address;
    Poco::Net::SocketAddress m_from;
};

/// The query of the "velmora://auth?…" link in a page, decoded.
[[nodiscard]] std::map<std::string, std::string> callbackParameters(const std::string& html);

} // namespace velmora::server
