#pragma once

#include "speech/recogniser.h"

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
    };

    /// Fails with std::runtime_error if the URL is not http or https.
    explicit OpenAiRecogniser(const Settings& settings);

    [[nodiscard]] std::optional<Language> resolve(const Language& wanted) const override { return wanted; }

    /// Longer than a local recogniser's: such models do better with more to go by.
    [[nodiscard]] PieceLimits pieceLimits() const override;

    [[nodiscard]] std::unique_ptr<Recognition> begin(const Expectation& expectation,
                                                     const std::stop_token& stop) override;

private:
    class Upload;

    Poco::URI m_endpoint;
    std::string m_model;
    std::string m_key;
};

} // namespace velmora::server
