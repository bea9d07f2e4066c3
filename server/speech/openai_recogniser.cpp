#include "speech/openai_recogniser.h"

#include "speech/wav.h"

#include <Poco/JSON/Parser.h>
#include <Poco/Net/HTMLForm.h>
#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/Net/StringPartSource.h>
#include <sys/socket.h>

#include <istream>
#include <string_view>

namespace velmora::server {

namespace {

constexpr std::size_t replyLimit = 1024 * 1024;
constexpr std::string_view endpointPath = "/audio/transcriptions";

RecogniserError unavailable() {
    return {"recogniser_unavailable", "Сервис распознавания не отвечает. Попробуйте позже"};
}

RecogniserError refusal(int status) {
    switch (status) {
    case 401:
    case 403:
        return {"recogniser_refused", "Сервис распознавания не принял ключ. Проверьте key-file сервера"};
    case 429:
        return {"recogniser_busy",
                "Сервис распознавания перегружен или исчерпан его лимит. Попробуйте позже"};
    default:
        return {"recogniser_failed", "Сервис распознавания ответил ошибкой HTTP " + std::to_string(status)};
    }
}

std::string readAll(std::istream& stream) {
    std::string text(replyLimit, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

} // namespace

class OpenAiRecogniser::Upload : public Recognition {
public:
    Upload(const OpenAiRecogniser& owner, Expectation expectation)
        : m_owner(owner)
        , m_expectation(std::move(expectation)) {}

    std::string recognise(std::span<const std::int16_t> samples, const std::stop_token& stop) override {
        try {
            const auto reply = exchange(samples, stop);
            return stop.stop_requested() ? std::string()
                                         : Poco::JSON::Parser()
                                               .parse(reply)
                                               .extract<Poco::JSON::Object::Ptr>()
                                               ->getValue<std::string>("text");
        } catch (const Poco::Exception&) {
            if (stop.stop_requested()) {
                return {};
            }
            throw unavailable();
        }
    }

private:
    std::string exchange(std::span<const std::int16_t> samples, const std::stop_token& stop) {
        while (auto connection = m_owner.m_connections->kept()) {
            try {
                return exchangeOver(std::move(connection), samples, stop);
            } catch (const Poco::IOException&) {
                // The service had closed it, or did so just now.
                if (stop.stop_requested()) {
                    throw;
                }
            }
        }
        return exchangeOver(m_owner.m_connections->make(), samples, stop);
    }

    std::string exchangeOver(ServiceConnections::Connection connection, std::span<const std::int16_t> samples,
                             const std::stop_token& stop) {
        Poco::Net::HTTPResponse response;
        std::string reply;
        {
            // Shuts the connection under a transfer in progress, which then ends with an error.
            const std::stop_callback abort(
                stop, [&connection] { ::shutdown(connection->socket().impl()->sockfd(), SHUT_RDWR); });
            send(*connection, samples);
            // It may have come before there was a connection to shut.
            if (stop.stop_requested()) {
                return {};
            }
            auto& stream = connection->receiveResponse(response);
            reply = readAll(stream);
            if (!stream.eof()) {
                response.setKeepAlive(false);
            }
        }
        if (response.getKeepAlive() && !stop.stop_requested()) {
            m_owner.m_connections->keep(std::move(connection));
        }
        if (response.getStatus() != Poco::Net::HTTPResponse::HTTP_OK) {
            throw refusal(response.getStatus());
        }
        return reply;
    }

    void send(Poco::Net::HTTPClientSession& session, std::span<const std::int16_t> samples) {
        Poco::Net::HTTPRequest request(Poco::Net::HTTPRequest::HTTP_POST,
                                       m_owner.m_endpoint.getPathAndQuery(),
                                       Poco::Net::HTTPRequest::HTTP_1_1);
        Poco::Net::HTMLForm form(Poco::Net::HTMLForm::ENCODING_MULTIPART);
        form.set("model", m_owner.m_model);
        form.set("response_format", "json");
        if (!m_expectation.language.isAutomatic()) {
            form.set("language", m_expectation.language.code());
        }
        if (!m_expectation.vocabulary.empty()) {
            form.set("prompt", m_expectation.vocabulary);
        }
        // The form owns the part.
        form.addPart("file", new Poco::Net::StringPartSource(wavFile(samples), "audio/wav", "speech.wav"));
        if (!m_owner.m_key.empty()) {
            request.set("Authorization", "Bearer " + m_owner.m_key);
        }
        form.prepareSubmit(request);
        form.write(session.sendRequest(request));
    }

    const OpenAiRecogniser& m_owner;
    Expectation m_expectation;
};

OpenAiRecogniser::OpenAiRecogniser(const Settings& settings)
    : m_model(settings.model)
    , m_key(settings.key)
    , m_atOnce(settings.connections) {
    try {
        m_endpoint = Poco::URI(settings.url);
    } catch (const Poco::Exception&) {
        throw std::runtime_error("not a URL: " + settings.url);
    }
    if ((m_endpoint.getScheme() != "http" && m_endpoint.getScheme() != "https") ||
        m_endpoint.getHost().empty()) {
        throw std::runtime_error("not an http or https URL: " + settings.url);
    }
    auto path = m_endpoint.getPath();
    if (!path.ends_with(endpointPath)) {
        while (path.ends_with('/')) {
            path.pop_back();
        }
        m_endpoint.setPath((path.empty() ? "/v1" : path) + std::string(endpointPath));
    }
    m_connections = std::make_unique<ServiceConnections>(m_endpoint);
}

PieceLimits OpenAiRecogniser::pieceLimits() const {
    return {.shortest = std::chrono::seconds(8),
            .longest = std::chrono::seconds(30),
            .pause = std::chrono::milliseconds(500)};
}

std::unique_ptr<Recognition> OpenAiRecogniser::begin(const Expectation& expectation) {
    return std::make_unique<Upload>(*this, expectation);
}

} // namespace velmora::server
