#pragma once

namespace velmora::server {

class Exchange;

/// Answers the requests of one route. Called from many threads at once.
class Handler {
public:
    virtual ~Handler() = default;

    /// Sends a reply, or fails with HttpError before it has begun one.
    virtual void handle(Exchange& exchange) = 0;
};

} // namespace velmora::server
