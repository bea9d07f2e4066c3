#include "raw_client.h"

#include <Poco/Net/HTTPResponse.h>
#include <Poco/Net/NetException.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <array>
#include <sstream>
#include <thread>

namespace velmora::server {

namespace {

constexpr std::chrono::milliseconds lookInterval{5};

} // namespace

RawClient::RawClient(const std::string& server, const std::string& from, Reading reading)
    : m_socket(Poco::Net::SocketAddress::IPv4) {
    if (reading == Reading::Reluctant) {
        m_socket.setReceiveBufferSize(1);
        // Small packets, for the other side makes room for several of the largest.
        m_socket.setOption(IPPROTO_TCP, TCP_MAXSEG, 536);
    }
    m_socket.impl()->bind(Poco::Net::SocketAddress(from, 0));
    m_socket.connect(Poco::Net::SocketAddress(server));
    m_socket.setReceiveTimeout(Poco::Timespan(patience.count(), 0));
}

bool RawClient::send(const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const auto went =
            ::send(m_socket.impl()->sockfd(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (went < 0) {
            return false;
        }
        sent += static_cast<std::size_t>(went);
    }
    return true;
}

bool RawClient::dripUntilReply(const std::string& bytes, std::chrono::milliseconds interval) {
    const auto end = std::chrono::steady_clock::now() + patience;
    for (const char byte : bytes) {
        if (!send({byte}) || hasReply(interval)) {
            return true;
        }
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
    }
    return false;
}

bool RawClient::hasReply(std::chrono::milliseconds time) {
    return m_socket.poll(Poco::Timespan(std::chrono::microseconds(time).count()),
                         Poco::Net::Socket::SELECT_READ);
}

std::string RawClient::readUntil(const std::string& text) {
    std::string got;
    char byte = 0;
    while (!got.ends_with(text) && m_socket.receiveBytes(&byte, 1) > 0) {
        got += byte;
    }
    return got;
}

Reply RawClient::reply() {
    std::string bytes;
    std::array<char, 16 * 1024> some{};
    try {
        while (const int count = m_socket.receiveBytes(some.data(), some.size())) {
            bytes.append(some.data(), static_cast<std::size_t>(count));
        }
    } catch (const Poco::Net::NetException&) {
        // A reset behind the reply; what came before it counts.
    }
    Reply reply;
    std::istringstream stream(bytes);
    Poco::Net::HTTPResponse response;
    if (!bytes.empty()) {
        response.read(stream);
        reply.status = response.getStatus();
    }
    for (const auto& [name, value] : response) {
        reply.headers[name] = value;
    }
    reply.body.assign(std::istreambuf_iterator<char>(stream), {});
    return reply;
}

bool RawClient::isAbandoned() {
    return comesTrue([this] { return !send("x"); });
}

std::string padded(std::string text, std::size_t size) {
    text.resize(size, ' ');
    return text;
}

bool comesTrue(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(lookInterval);
    }
    return true;
}

} // namespace velmora::server
