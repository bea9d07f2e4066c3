#pragma once

#include "speech/recogniser.h"

#include <filesystem>
#include <mutex>
#include <vector>

struct ps_decoder_s;

namespace velmora::server {

/// Recognises English on this machine. Decoders are costly to make: they are kept, and each works on a piece
/// of whichever dictation has its turn.
class PocketsphinxRecogniser : public Recogniser {
public:
    /// Makes the first decoder, so that the first dictation need not wait. Fails with std::runtime_error if
    /// the model is missing.
    explicit PocketsphinxRecogniser(std::filesystem::path models = defaultModels());
    ~PocketsphinxRecogniser() override;

    [[nodiscard]] std::optional<Language> resolve(const Language& wanted) const override;
    [[nodiscard]] PieceLimits pieceLimits() const override { return {}; }
    /// One a core; but each takes 100 MB.
    [[nodiscard]] unsigned atOnce() const override;
    [[nodiscard]] std::unique_ptr<Recognition> begin(const Expectation& expectation) override;

private:
    class Words;
    class Loan;
    struct FreeDecoder {
        void operator()(ps_decoder_s* decoder) const;
    };
    using Decoder = std::unique_ptr<ps_decoder_s, FreeDecoder>;

    [[nodiscard]] static std::filesystem::path defaultModels();
    [[nodiscard]] Decoder makeDecoder() const;

    std::filesystem::path m_models;
    std::mutex m_mutex;
    std::vector<Decoder> m_idle;
};

} // namespace velmora::server
