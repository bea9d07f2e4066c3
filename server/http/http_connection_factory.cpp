#include "http/http_connection_factory.h"

#include "http/connection_watch.h"

#include <Poco/Net/HTTPServerConnection.h>

namespace velmora::server {

namespace {

constexpr std::chrono::seconds writeTimeout{10};

class WatchedConnection : public Poco::Net::HTTPServerConnection {
public:
    WatchedConnection(ConnectionWatch& watch, std::chrono::milliseconds headerTime,
                      const Poco::Net::StreamSocket& socket, Poco::Net::HTTPServerParams::Ptr parameters,
                      Poco::Net::HTTPRequestHandlerFactory::Ptr handlers)
        : Poco::Net::HTTPServerConnection(socket, std::move(parameters), std::move(handlers))
        , m_watch(watch)
        , m_headerTime(headerTime) {}

    void run() override {
        socket().setSendTimeout(Poco::Timespan(writeTimeout.count(), 0));
        m_watch.add(socket(), m_headerTime);
        try {
            Poco::Net::HTTPServerConnection::run();
        } catch (const Poco::Exception&) {
            // A connection that breaks is the peer's affair; what matters has been answered or logged before.
        }
        m_watch.forget(socket());
    }

private:
    ConnectionWatch& m_watch;
    std::chrono::milliseconds m_headerTime;
};

} // namespace

HttpConnectionFactory::HttpConnectionFactory(ConnectionWatch& watch, std::chrono::milliseconds headerTime,
                                             Poco::Net::HTTPServerParams::Ptr parameters,
                                             Poco::Net::HTTPRequestHandlerFactory::Ptr handlers)
    : m_watch(watch)
    , m_headerTime(headerTime)
    , m_parameters(std::move(parameters))
    , m_handlers(std::move(handlers)) {}

Poco::Net::TCPServerConnection*
HttpConnectionFactory::createConnection(const Poco::Net::StreamSocket& socket) {
    return new WatchedConnection(m_watch, m_headerTime, socket, m_parameters, m_handlers);
}

} // namespace velmora::server
