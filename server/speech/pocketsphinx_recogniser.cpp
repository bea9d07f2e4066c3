#include "speech/pocketsphinx_recogniser.h"

#include <pocketsphinx.h>

#include <algorithm>
#include <thread>

namespace velmora::server {

class PocketsphinxRecogniser::Lease : public Recognition {
public:
    Lease(PocketsphinxRecogniser& owner, Decoder decoder)
        : m_owner(owner)
        , m_decoder(std::move(decoder)) {}

    ~Lease() override { m_owner.giveBack(std::move(m_decoder)); }

    std::string recognise(std::span<const std::int16_t> samples, const std::stop_token& stop) override {
        if (stop.stop_requested()) {
            return {};
        }
        // Decoding the utterance as a whole gives the same words for the same sound; piece by piece does not.
        if (ps_start_stream(m_decoder.get()) < 0 || ps_start_utt(m_decoder.get()) < 0 ||
            ps_process_raw(m_decoder.get(), samples.data(), samples.size(), FALSE, TRUE) < 0 ||
            ps_end_utt(m_decoder.get()) < 0) {
            throw RecogniserError("recogniser_failed", "Не удалось распознать запись");
        }
        const char* words = ps_get_hyp(m_decoder.get(), nullptr);
        return words ? words : "";
    }

private:
    PocketsphinxRecogniser& m_owner;
    Decoder m_decoder;
};

void PocketsphinxRecogniser::FreeDecoder::operator()(ps_decoder_s* decoder) const {
    ps_free(decoder);
}

PocketsphinxRecogniser::PocketsphinxRecogniser(std::filesystem::path models)
    : m_models(std::move(models))
    , m_unmade(std::max(1U, std::thread::hardware_concurrency()) - 1) {
    m_idle.push_back(makeDecoder());
}

PocketsphinxRecogniser::~PocketsphinxRecogniser() = default;

std::optional<Language> PocketsphinxRecogniser::resolve(const Language& wanted) const {
    static const auto english = Language::fromPreference("en");
    return wanted.isAutomatic() || wanted == english ? english : std::nullopt;
}

std::unique_ptr<Recognition> PocketsphinxRecogniser::begin(const Expectation& /*expectation*/,
                                                           const std::stop_token& stop) {
    {
        std::unique_lock lock(m_mutex);
        if (!m_returned.wait(lock, stop, [this] { return !m_idle.empty() || m_unmade > 0; })) {
            return nullptr;
        }
        if (!m_idle.empty()) {
            auto decoder = std::move(m_idle.back());
            m_idle.pop_back();
            return std::make_unique<Lease>(*this, std::move(decoder));
        }
        --m_unmade;
    }
    try {
        return std::make_unique<Lease>(*this, makeDecoder());
    } catch (...) {
        const std::scoped_lock lock(m_mutex);
        ++m_unmade;
        m_returned.notify_one();
        throw;
    }
}

void PocketsphinxRecogniser::giveBack(Decoder decoder) {
    const std::scoped_lock lock(m_mutex);
    m_idle.push_back(std::move(decoder));
    m_returned.notify_one();
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
