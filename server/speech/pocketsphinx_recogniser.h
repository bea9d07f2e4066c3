#pragma once

#include "speech/recogniser.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>

struct ps_decoder_s;

namespace velmora::server {

/// Recognises English on this machine. Decoders are costly to make: they are kept, and at most one per core
/// works at a time.
class PocketsphinxRecogniser : public Recogniser {
public:
    /// Makes the first decoder, so that the first dictation need not wait. Fails with std::runtime_error if
    /// the model is missing.
    explicit PocketsphinxRecogniser(std::filesystem::path models = defaultModels());
    ~PocketsphinxRecogniser() override;

    [[nodiscard]] std::optional<Language> resolve(const Language& wanted) const override;
    [[nodiscard]] PieceLimits pieceLimits() const override { return {}; }
    [[nodiscard]] std::unique_ptr<Recognition> begin(const Expectation& expectation,
                                                     const std::stop_token& stop) override;

private:
    class Lease;
    struct FreeDecoder {
        void operator()(ps_decoder_s* decoder) const;
    };
    using Decoder = std::unique_ptr<ps_decoder_s, FreeDecoder>;

    [[nodiscard]] static std::filesystem::path defaultModels();
    [[nodiscard]] Decoder makeDecoder() const;
    void giveBack(Decoder decoder);

    std::filesystem::path m_models;
    std::mutex m_mutex;
    std::condition_variable_any m_returned;
    std::vector<Decoder> m_idle;
    /// How many more may be made.
    unsigned m_unmade;
};

} // namespace velmora::server
