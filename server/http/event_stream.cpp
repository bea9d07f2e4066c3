#include "http/event_stream.h"

#include <sstream>

namespace velmora::server {

bool EventStream::send(const std::string& event, const Poco::JSON::Object& data) {
    std::ostringstream block;
    block << "event: " << event << "\ndata: ";
    data.stringify(block);
    block << "\n\n";
    m_stream << block.str();
    return flush();
}

bool EventStream::sendComment() {
    m_stream << ": \n\n";
    return flush();
}

bool EventStream::flush() {
    try {
        m_stream.flush();
    } catch (const Poco::Exception&) {
        return false;
    }
    return m_stream.good();
}

} // namespace velmora::server
