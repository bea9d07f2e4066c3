#pragma once

#include "http/pace.h"

#include <cstdint>
#include <streambuf>
#include <string>
#include <vector>

namespace velmora::server {

class ClientSocket;

/// The body of a request. It is gathered without waiting, or read as a stream that waits for its peer; what
/// was gathered comes first.
class BodyBuffer : public std::streambuf {
public:
    /// `begun` is what came along with the head.
    BodyBuffer(ClientSocket& socket, std::uint64_t length, std::string begun, const HttpLimits& limits);

    /// Takes what the socket has without waiting; false at its end.
    [[nodiscard]] bool gather();
    [[nodiscard]] bool isGathered() const { return m_missing == 0; }
    [[nodiscard]] const Pace& pace() const { return m_pace; }

    /// From now on it is read as a stream.
    void startStream();
    /// The stream ends then, however much is missing.
    void setDeadline(Pace::Clock::time_point deadline) { m_deadline = deadline; }

    /// The stream has ended because the peer was too slow.
    [[nodiscard]] bool stalled() const { return m_stalled; }

protected:
    int_type underflow() override;

private:
    ClientSocket& m_socket;
    /// What the socket still has to bring.
    std::uint64_t m_missing;
    std::string m_gathered;
    std::vector<char> m_bytes;
    Pace m_pace;
    Pace::Clock::time_point m_deadline = Pace::Clock::time_point::max();
    bool m_stalled = false;
};

} // namespace velmora::server
