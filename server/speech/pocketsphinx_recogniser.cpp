#include "speech/pocketsphinx_recogniser.h"

#include <pocketsphinx.h>

#include <algorithm>
#include <thread>

namespace velmora::server {

namespace {
constexpr unsigned mostDecoders = 8;
}

/// A decoder taken out of those that are kept, or a new one.
class PocketsphinxRecogniser::Loan {
public:
    explicit Loan(PocketsphinxRecogniser& owner)
        : m_owner(owner) {
        {
            const std::scoped_lock lock(owner.m_mutex);
            if (!owner.m_idle.empty()) {
                m_decoder = std::move(owner.m_idle.back());
                owner.m_idle.pop_back();
                return;
            }
        }
        m_decoder = owner.makeDecoder();
    }
    ~Loan() {
        const std::scoped_lock lock(m_owner.m_mutex);
        m_owner.m_idle.push_back(std::move(m_decoder));
    }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

    [[nodiscard]] ps_decoder_s* decoder() const { return m_decoder.get(); }

private:
    PocketsphinxRecogniser& m_owner;
    Decoder m_decoder;
};

class PocketsphinxRecogniser::Words : public Recognition {
public:
    explicit Words(PocketsphinxRecogniser& owner)
        : m_owner(owner) {}

    std::string recognise(std::span<const std::int16_t> samples, const std::stop_token& stop) override {
        if (stop.stop_requested()) {
            return {};
        }
        const Loan loan(m_owner);
        auto* decoder = loan.decoder();
        // Decoding the utterance as a whole gives the same words for the same sound; piece by piece does not.
        if (ps_start_stream(decoder) < 0 || ps_start_utt(decoder) < 0 ||
            ps_process_raw(decoder, samples.data(), samples.size(), FALSE, TRUE) < 0 ||
            ps_end_utt(decoder) < 0) {
            throw RecogniserError("recogniser_failed", "Не удалось распознать запись");
        }
        const char* words = ps_get_hyp(decoder, nullptr);
        return words ? words : "";
    }

private:
    PocketsphinxRecogniser& m_owner;
};

void PocketsphinxRecogniser::FreeDecoder::operator()(ps_decoder_s* decoder) const {
    ps_free(decoder);
}

PocketsphinxRecogniser::PocketsphinxRecogniser(std::filesystem::path models)
    : m_models(std::move(models)) {
    m_idle.push_back(makeDecoder());
}

PocketsphinxRecogniser::~PocketsphinxRecogniser() = default;

std::optional<Language> PocketsphinxRecogniser::resolve(const Language& wanted) const {
    static const auto english = Language::fromPreference("en");
    return wanted.isAutomatic() || wanted == english ? english : std::nullopt;
}

unsigned PocketsphinxRecogniser::atOnce() const {
    return std::clamp(std::thread::hardware_concurrency(), 1U, mostDecoders);
}

std::unique_ptr<Recognition> PocketsphinxRecogniser::begin(const Expectation& /*expectation*/) {
    return std::make_unique<Words>(*this);
}

std::filesystem::path PocketsphinxRecogniser::defaultModels() {
    return VELMORA_POCKETSPHINX_MODELS;
}

PocketsphinxRecogniser::Decoder PocketsphinxRecogniser::makeDecoder() const {
    const auto folder = m_models / "en-us";
    if (!std::filesystem::exists(folder / "en-us.lm.bin")) {
        throw std::runtime_error("no speech model in " + folder.string() +
                                 " (Debian: apt install pocketsphinx-en-us)");
    }
    // One pass and a bound on what it follows: the words are as good, and cost little more than half.
    auto* config = cmd_ln_init(nullptr, ps_args(), TRUE,                         //
                               "-hmm", (folder / "en-us").c_str(),               //
                               "-lm", (folder / "en-us.lm.bin").c_str(),         //
                               "-dict", (folder / "cmudict-en-us.dict").c_str(), //
                               "-fwdflat", "no",                                 //
                               "-maxhmmpf", "3000",                              //
                               "-logfn", "/dev/null",                            //
                               nullptr);
    Decoder decoder(config ? ps_init(config) : nullptr);
    cmd_ln_free_r(config);
    if (!decoder) {
        throw std::runtime_error("the speech model in " + folder.string() + " cannot be loaded");
    }
    return decoder;
}

} // namespace velmora::server
