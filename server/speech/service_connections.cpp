#include "speech/service_connections.h"

#include <Poco/Net/Context.h>
#include <Poco/Net/HTTPSClientSession.h>

namespace velmora::server {

namespace {

constexpr int connectSeconds = 10;
constexpr int transferSeconds = 60;
/// Services close what was idle for some more than this.
constexpr int idleSeconds = 20;

/// What an idle connection has to say is that it was closed.
bool isQuiet(Poco::Net::HTTPClientSession& connection) {
    try {
        return !connection.socket().poll(Poco::Timespan(), Poco::Net::Socket::SELECT_READ);
    } catch (const Poco::Exception&) {
        return false;
    }
}

} // namespace

/// The system's authorities are read once, not for each connection.
struct ServiceConnections::Tls {
    Poco::Net::Context::Ptr context = new Poco::Net::Context(Poco::Net::Context::TLS_CLIENT_USE, "", "", "",
                                                             Poco::Net::Context::VERIFY_STRICT, 9, true);
};

ServiceConnections::ServiceConnections(const Poco::URI& service)
    : m_service(service)
    , m_tls(service.getScheme() == "https" ? std::make_unique<Tls>() : nullptr) {}

ServiceConnections::~ServiceConnections() = default;

ServiceConnections::Connection ServiceConnections::kept() {
    const std::scoped_lock lock(m_mutex);
    while (!m_kept.empty()) {
        auto connection = std::move(m_kept.back());
        m_kept.pop_back();
        if (isQuiet(*connection)) {
            return connection;
        }
    }
    return nullptr;
}

ServiceConnections::Connection ServiceConnections::make() const {
    Connection connection;
    if (m_tls) {
        connection = std::make_unique<Poco::Net::HTTPSClientSession>(m_service.getHost(), m_service.getPort(),
                                                                     m_tls->context);
    } else {
        connection = std::make_unique<Poco::Net::HTTPClientSession>(m_service.getHost(), m_service.getPort());
    }
    connection->setTimeout(Poco::Timespan(connectSeconds, 0), Poco::Timespan(transferSeconds, 0),
                           Poco::Timespan(transferSeconds, 0));
    connection->setKeepAlive(true);
    connection->setKeepAliveTimeout(Poco::Timespan(idleSeconds, 0));
    return connection;
}

void ServiceConnections::keep(Connection connection) {
    const std::scoped_lock lock(m_mutex);
    m_kept.push_back(std::move(connection));
}

} // namespace velmora::server
