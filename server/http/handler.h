#pragma once

namespace velmora::server {

class Exchange;

/// What a request is to the server.
enum class Work {
    /// Its body is small and there before it begins; it never waits for its peer and computes for moments.
    Quick,
    /// The same, but it computes for long.
    Heavy,
    /// Reads and writes as fast as its peer does, so it has a thread of its own.
    Stream
};

/// Answers the requests of one route. Called from many threads at once.
class Handler {
public:
    virtual ~Handler() = default;

    [[nodiscard]] virtual Work work() const { return Work::Quick; }

    /// Sends a reply, or fails with HttpError before it has begun one.
    virtual void handle(Exchange& exchange) = 0;
};

} // namespace velmora::server
