#pragma once

#include <Poco/URI.h>

#include <memory>
#include <mutex>
#include <vector>

namespace Poco::Net {
class HTTPClientSession;
}

namespace velmora::server {

/// The connections to one service: what has been said over one is left open for what comes next, for setting
/// one up can take longer than the rest. Thread-safe.
class ServiceConnections {
public:
    using Connection = std::unique_ptr<Poco::Net::HTTPClientSession>;

    explicit ServiceConnections(const Poco::URI& service);
    ~ServiceConnections();
    ServiceConnections(const ServiceConnections&) = delete;
    ServiceConnections& operator=(const ServiceConnections&) = delete;

    /// One that was kept, null if there is none. The service may close it at any moment.
    [[nodiscard]] Connection kept();

    [[nodiscard]] Connection make() const;

    /// For one whose reply was read to its end.
    void keep(Connection connection);

private:
    struct Tls;

    Poco::URI m_service;
    std::unique_ptr<Tls> m_tls;
    std::mutex m_mutex;
    std::vector<Connection> m_kept;
};

} // namespace velmora::server
