#pragma once

#include "backend/http_transport.h"

#include <QNetworkAccessManager>

namespace velmora {

class MainLoop;

/// Over Qt's network access, HTTP/1.1. Redirects are followed for GET within one origin; every other 3xx is a
/// reply like any. Keeps no cookies, no cache and no credentials.
class QtHttpTransport final : public HttpTransport {
public:
    explicit QtHttpTransport(MainLoop& loop);

    Task<OpenHttpReply> open(HttpRequest request, std::stop_token stop) override;

private:
    [[nodiscard]] QNetworkReply* start(const HttpRequest& request);

    MainLoop& m_loop;
    QNetworkAccessManager m_network; // owns the replies, and they the exchanges
};

} // namespace velmora
