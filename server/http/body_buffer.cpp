#include "http/body_buffer.h"

#include "http/client_socket.h"

#include <algorithm>
#include <array>

namespace velmora::server {

namespace {

constexpr std::uint64_t bufferSize = 32 * 1024;

} // namespace

BodyBuffer::BodyBuffer(ClientSocket& socket, std::uint64_t length, std::string begun,
                       const HttpLimits& limits)
    : m_socket(socket)
    , m_missing(length)
    , m_gathered(std::move(begun))
    , m_pace(limits) {
    // What is sent behind the body belongs to no request: a connection serves one.
    m_gathered.resize(std::min<std::uint64_t>(m_gathered.size(), length));
    m_missing -= m_gathered.size();
}

bool BodyBuffer::gather() {
    std::array<char, bufferSize> bytes{};
    while (m_missing > 0) {
        const auto got = m_socket.receive(std::span(bytes).first(std::min(bufferSize, m_missing)));
        if (!got) {
            return true;
        }
        if (*got == 0) {
            return false;
        }
        m_gathered.append(bytes.data(), *got);
        m_missing -= *got;
        m_pace.passed(*got);
    }
    return true;
}

void BodyBuffer::startStream() {
    setg(m_gathered.data(), m_gathered.data(), m_gathered.data() + m_gathered.size());
}

BodyBuffer::int_type BodyBuffer::underflow() {
    if (m_missing == 0) {
        return traits_type::eof();
    }
    m_bytes.resize(bufferSize);
    const auto got = m_socket.receive(std::span(m_bytes).first(std::min(bufferSize, m_missing)),
                                      std::min(m_deadline, m_pace.deadline()));
    m_stalled = !got;
    if (!got || *got == 0) {
        return traits_type::eof();
    }
    m_missing -= *got;
    m_pace.passed(*got);
    setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + *got);
    return traits_type::to_int_type(*gptr());
}

} // namespace velmora::server
