#pragma once

#include "backend/http_message.h"
#include "backend/transport_error.h"
#include "foundation/task.h"

#include <stop_token>

namespace velmora {

/// Sends HTTP requests. Main thread.
///
/// Every status is a reply; what fails, fails with TransportError. A request leaves at most once, GET
/// excepted. A requested stop closes the connection at once and always ends in failure, so a caller that
/// hands over the stop token of its own lifetime needs no other look at it after the wait.
class HttpTransport {
public:
    virtual ~HttpTransport() = default;

    /// Ready when status and headers are there.
    virtual Task<OpenHttpReply> open(HttpRequest request, std::stop_token stop) = 0;

    /// Ready when the body is there as well.
    Task<HttpReply> send(HttpRequest request, std::stop_token stop);
};

} // namespace velmora
