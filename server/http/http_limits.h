#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace velmora::server {

/// What the server puts up with: from one connection, from one address, and in all.
struct HttpLimits {
    /// From the connection to the end of the request's header.
    std::chrono::milliseconds header{10'000};
    /// Between two reads of a body; and what a body or a reply has before the least rate counts.
    std::chrono::milliseconds patience{15'000};
    /// Of bodies that come and replies that go, on the average, in bytes per second.
    std::uint64_t leastRate = 1024;
    /// For one event of a stream to find room on its way.
    std::chrono::milliseconds write{10'000};
    /// For what the peer still sends after its reply.
    std::chrono::milliseconds drain{30'000};

    std::size_t headerSize = 16 * 1024;
    /// Of a body that is gathered before it is worked on.
    std::size_t bodySize = 64 * 1024;

    std::size_t connections = 2048;
    std::size_t streams = 512;
    /// Connections of one address that have yet to ask for something; and those that are being left. The
    /// oldest gives way to the next, so a newcomer is heard however many there are.
    std::size_t waitingPerAddress = 128;
    std::size_t streamsPerAddress = 256;
};

} // namespace velmora::server
