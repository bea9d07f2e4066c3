#include "fake_transcription_service.h"

#include <Poco/Net/HTMLForm.h>
#include <Poco/Net/HTTPRequestHandler.h>
#include <Poco/Net/HTTPRequestHandlerFactory.h>
#include <Poco/Net/HTTPServer.h>
#include <Poco/Net/HTTPServerRequest.h>
#include <Poco/Net/HTTPServerRequestImpl.h>
#include <Poco/Net/HTTPServerResponse.h>
#include <Poco/Net/PartHandler.h>
#include <Poco/StreamCopier.h>

#include <limits>
#include <utility>

namespace velmora::server {

namespace {

struct FileKeeper : Poco::Net::PartHandler {
    void handlePart(const Poco::Net::MessageHeader& /*header*/, std::istream& stream) override {
        Poco::StreamCopier::copyToString(stream, file);
    }
    std::string file;
};

} // namespace

class FakeTranscriptionService::Handler : public Poco::Net::HTTPRequestHandler {
public:
    explicit Handler(FakeTranscriptionService& service)
        : m_service(service) {}

    void handleRequest(Poco::Net::HTTPServerRequest& request,
                       Poco::Net::HTTPServerResponse& response) override {
        FileKeeper keeper;
        const Poco::Net::HTMLForm form(request, request.stream(), keeper);
        // The form stops reading at its end, which is not that of the body.
        request.stream().ignore(std::numeric_limits<std::streamsize>::max());
        std::unique_lock lock(m_service.m_mutex);
        m_service.m_last = {request.getURI(), request.get("Authorization", {}), {}, keeper.file};
        for (const auto& [name, value] : form) {
            m_service.m_last.fields[name] = value;
        }
        ++m_service.m_received;
        m_service.m_changed.notify_all();
        m_service.m_changed.wait(lock, [this] { return !m_service.m_hold; });
        if (std::exchange(m_service.m_hangUp, false)) {
            dynamic_cast<Poco::Net::HTTPServerRequestImpl&>(request).socket().shutdown();
            return;
        }
        response.setStatus(static_cast<Poco::Net::HTTPResponse::HTTPStatus>(m_service.status));
        response.setContentType("application/json");
        response.sendBuffer(m_service.reply.data(), m_service.reply.size());
    }

private:
    FakeTranscriptionService& m_service;
};

class FakeTranscriptionService::Factory : public Poco::Net::HTTPRequestHandlerFactory {
public:
    explicit Factory(FakeTranscriptionService& service)
        : m_service(service) {}

    Poco::Net::HTTPRequestHandler*
    createRequestHandler(const Poco::Net::HTTPServerRequest& /*request*/) override {
        return new Handler(m_service);
    }

private:
    FakeTranscriptionService& m_service;
};

FakeTranscriptionService::FakeTranscriptionService() {
    listen(0);
}

void FakeTranscriptionService::listen(unsigned short port) {
    const Poco::Net::ServerSocket socket(Poco::Net::SocketAddress("127.0.0.1", port));
    m_port = socket.address().port();
    Poco::Net::HTTPServerParams::Ptr parameters(new Poco::Net::HTTPServerParams);
    parameters->setMaxKeepAliveRequests(100);
    m_server = std::make_unique<Poco::Net::HTTPServer>(new Factory(*this), socket, parameters);
    m_server->start();
}

void FakeTranscriptionService::restart() {
    stop();
    listen(m_port);
}

int FakeTranscriptionService::connections() const {
    return m_server->totalConnections();
}

void FakeTranscriptionService::hangUpNext() {
    const std::scoped_lock lock(m_mutex);
    m_hangUp = true;
}

FakeTranscriptionService::~FakeTranscriptionService() {
    stop();
}

std::string FakeTranscriptionService::url() const {
    return "http://127.0.0.1:" + std::to_string(m_port);
}

FakeTranscriptionService::Request FakeTranscriptionService::last() {
    const std::scoped_lock lock(m_mutex);
    return m_last;
}

void FakeTranscriptionService::stop() {
    {
        const std::scoped_lock lock(m_mutex);
        m_hold = false;
        m_changed.notify_all();
    }
    if (m_server) {
        m_server->stopAll(true);
        m_server.reset();
    }
}

void FakeTranscriptionService::hold() {
    const std::scoped_lock lock(m_mutex);
    m_hold = true;
}

void FakeTranscriptionService::waitForRequest() {
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::seconds(20), [this] { return m_received > 0; });
}

} // namespace velmora::server
