#pragma once

#include <Poco/Net/HTTPRequestHandlerFactory.h>
#include <Poco/Net/HTTPServerParams.h>
#include <Poco/Net/TCPServerConnectionFactory.h>

#include <chrono>

namespace velmora::server {

class ConnectionWatch;

/// Makes HTTP connections whose whole life is watched, from the first byte of the header on.
class HttpConnectionFactory : public Poco::Net::TCPServerConnectionFactory {
public:
    HttpConnectionFactory(ConnectionWatch& watch, std::chrono::milliseconds headerTime,
                          Poco::Net::HTTPServerParams::Ptr parameters,
                          Poco::Net::HTTPRequestHandlerFactory::Ptr handlers);

    Poco::Net::TCPServerConnection* createConnection(const Poco::Net::StreamSocket& socket) override;

private:
    ConnectionWatch& m_watch;
    std::chrono::milliseconds m_headerTime;
    Poco::Net::HTTPServerParams::Ptr m_parameters;
    Poco::Net::HTTPRequestHandlerFactory::Ptr m_handlers;
};

} // namespace velmora::server
