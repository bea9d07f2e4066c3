#pragma once

#include "speech/recogniser.h"
#include "speech/service_connections.h"

#include <Poco/URI.h>

namespace velmora::server {

/// Recognises through a server that answers like OpenAI's transcription endpoint.
class OpenAiRecogniser : public Recogniser {
public:
    struct Settings {
        /// Of the server ("https://host", "https://host/v1") or of the endpoint itself.
        std::string url;
        std::string model = "whisper-1";
        /// Sent as bearer token; empty for none.
        std::string key;
        /// How many pieces it is given at a time, each over a connection of its own.
        unsigned connections = 4;
    };

    /// Fails with std::runtime_error if the URL is not http or https.
    explicit OpenAiRecogniser(const Settings& settings);

    [[nodiscard]] std::optional<Language> resolve(const Language& wanted) const override { return wanted; }

    /// Longer than a local recogniser's: such models do better with more to go by.
    [[nodiscard]] PieceLimits pieceLimits() const override;

    [[nodiscard]] unsigned atOnce() const override { return m_atOnce; }
    [[nodiscard]] std::unique_ptr<Recognition> begin(const Expectation& expectation) override;

private:
    class Upload;

    Poco::URI m_endpoint;
    std::string m_model;
    std::string m_key;
    unsigned m_atOnce;
    std::unique_ptr<ServiceConnections> m_connections;
};

} // namespace velmora::server
