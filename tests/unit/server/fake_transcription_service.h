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

    /// From now on requests are not answered until the service stops.
    void hold();
    void waitForRequest();

    int status = 200;
    std::string reply = R"({"text":"words"})";

private:
    class Handler;
    class Factory;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    Request m_last;
    int m_received = 0;
    bool m_hold = false;
    unsigned short m_port = 0;
    std::unique_ptr<Poco::Net::HTTPServer> m_server;
};

} // namespace velmora::server
