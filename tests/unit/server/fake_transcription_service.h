#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace Poco::Net {
class HTTPServer;
}

namespace velmora::server {

/// A transcription endpoint on loopback that remembers what it was sent and answers what it was told.
class FakeTranscriptionService {
public:
    struct Request {
        std::string path;
        std::string authorization;
        std::map<std::string, std::string> fields;
        std::string file;
    };

    FakeTranscriptionService();
    ~FakeTranscriptionService();

    [[nodiscard]] std::string url() const;
    [[nodiscard]] Request last();
    void stop();
    /// Closes all connections, and takes new ones at the same port.
    void restart();

    /// How many connections were made since the start.
    [[nodiscard]] int connections() const;

    /// Takes the next request and closes its connection without a reply.
    void hangUpNext();

    /// From now on requests are not answered until the service stops.
    void hold();
    void waitForRequest();

    int status = 200;
    std::string reply = R"({"text":"words"})";

private:
    class Handler;
    class Factory;

    void listen(unsigned short port);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    Request m_last;
    int m_received = 0;
    bool m_hold = false;
    bool m_hangUp = false;
    unsigned short m_port = 0;
    std::unique_ptr<Poco::Net::HTTPServer> m_server;
};

} // namespace velmora::server
