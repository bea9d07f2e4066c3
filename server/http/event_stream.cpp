#include "http/event_stream.h"

#include "http/client_socket.h"

#include <sstream>

namespace velmora::server {

EventStream::EventStream(ClientSocket& socket, const std::string& head, Framing framing,
                         std::chrono::milliseconds writeTime)
    : m_socket(socket)
    , m_framing(framing)
    , m_writeTime(writeTime) {
    write(head);
}

EventStream::~EventStream() {
    if (m_framing == Framing::Chunks) {
        write("0\r\n\r\n");
    }
}

bool EventStream::send(const std::string& event, const Poco::JSON::Object& data) {
    std::ostringstream block;
    block << "event: " << event << "\ndata: ";
    data.stringify(block);
    block << "\n\n";
    return sendText(block.str());
}

bool EventStream::sendComment() {
    return sendText(": \n\n");
}

bool EventStream::sendText(const std::string& text) {
    if (m_framing == Framing::Bare) {
        return write(text);
    }
    std::ostringstream chunk;
    chunk << std::hex << text.size() << "\r\n" << text << "\r\n";
    return write(chunk.str());
}

bool EventStream::write(const std::string& bytes) {
    m_open = m_open && m_socket.sendAll(bytes, std::chrono::steady_clock::now() + m_writeTime);
    return m_open;
}

} // namespace velmora::server
