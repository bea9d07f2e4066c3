#include "backend/http_transport.h"

namespace velmora {

Task<HttpReply> HttpTransport::send(HttpRequest request, std::stop_token stop) {
    OpenHttpReply open = co_await this->open(std::move(request), std::move(stop));
    HttpReply reply{open.status, std::move(open.headers), {}};
    while (const std::optional<QByteArray> piece = co_await open.body.next())
        reply.body += *piece;
    co_return reply;
}

} // namespace velmora
