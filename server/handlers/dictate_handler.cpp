#include "handlers/dictate_handler.h"

#include "accounts/account_store.h"
#include "handlers/retry_after.h"
#include "http/exchange.h"
#include "http/http_error.h"
#include "http/multipart_upload.h"
#include "speech/audio_decoder.h"
#include "speech/dictation.h"
#include "speech/dictation_queue.h"
#include "speech/recogniser.h"
#include "speech/temp_file.h"

#include <algorithm>
#include <thread>

namespace velmora::server {

namespace {

/// How soon a client that went away is noticed.
constexpr std::chrono::milliseconds lookInterval{100};
/// Recognising is quicker than speaking; on a busy machine it may not be.
constexpr int workPerDuration = 4;
/// For files that don't tell their length.
constexpr std::chrono::minutes usualLength{1};

struct EventWriter {
    EventStream& stream;

    bool operator()(const DictationStage& stage) const {
        Poco::JSON::Object data;
        data.set("stage", stage.name);
        return stream.send("status", data);
    }
    bool operator()(const DictationText& text) const {
        Poco::JSON::Object data;
        data.set("delta", text.delta);
        return stream.send("chunk", data);
    }
    bool operator()(const DictationDone& done) const {
        Poco::JSON::Object data;
        data.set("text", done.text);
        data.set("wordCount", done.wordCount);
        stream.send("done", data);
        return false;
    }
    bool operator()(const DictationFailed& failed) const {
        Poco::JSON::Object data;
        data.set("code", failed.code);
        data.set("message", failed.message);
        stream.send("error", data);
        return false;
    }
};

} // namespace

/// Counts an account's running dictations.
class DictateHandler::Share {
public:
    Share(DictateHandler& handler, std::string accountId)
        : m_handler(handler)
        , m_accountId(std::move(accountId)) {
        const std::scoped_lock lock(handler.m_mutex);
        auto& count = handler.m_running[m_accountId];
        if (count >= handler.m_limits.perAccount) {
            handler.m_refusals.write("dictation refused, too many at once of account " + m_accountId);
            throw HttpError(429, "too_many_dictations", "Слишком много диктовок одновременно");
        }
        ++count;
    }
    ~Share() {
        const std::scoped_lock lock(m_handler.m_mutex);
        if (--m_handler.m_running[m_accountId] == 0) {
            m_handler.m_running.erase(m_accountId);
        }
    }
    Share(const Share&) = delete;
    Share& operator=(const Share&) = delete;

private:
    DictateHandler& m_handler;
    std::string m_accountId;
};

DictateHandler::DictateHandler(AccountStore& accounts, Recogniser& recogniser, DictationLimits limits,
                               std::filesystem::path tempFolder, std::stop_token stop)
    : m_accounts(accounts)
    , m_recogniser(recogniser)
    , m_limits(limits)
    , m_tempFolder(std::move(tempFolder))
    , m_stop(std::move(stop))
    , m_line(recogniser.atOnce()) {}

void DictateHandler::handle(Exchange& exchange) {
    const auto begun = std::chrono::steady_clock::now();
    const Share share(*this, exchange.identity().account.id);
    // Nobody uploads for nothing where even the shortest recording would come too late.
    refuseIfBusy(exchange, {}, begun);
    TempFile file(m_tempFolder);
    receive(exchange, file);
    answer(exchange, file, begun);
}

void DictateHandler::refuseIfBusy(Exchange& exchange, std::chrono::milliseconds sound,
                                  DictationLine::Time begun) {
    const auto forecast = m_line.forecast(exchange.identity().account.id, sound);
    const auto late =
        std::chrono::steady_clock::now() - begun + forecast.wait + forecast.work - m_limits.patience;
    // What takes too long without others in the way takes no less at another time.
    if (forecast.wait > std::chrono::milliseconds::zero() && late > std::chrono::milliseconds::zero()) {
        const auto pause = std::min<std::chrono::nanoseconds>(forecast.wait, late);
        const auto seconds = std::chrono::ceil<std::chrono::seconds>(pause);
        m_refusals.write("dictation refused, too much to do before that of account " +
                         exchange.identity().account.id);
        setRetryAfter(exchange, seconds);
        throw HttpError(503, "busy",
                        "Сервер занят другими диктовками. Попробуйте снова через " +
                            std::to_string(seconds.count()) + " с");
    }
}

void DictateHandler::receive(Exchange& exchange, TempFile& file) const {
    exchange.allow(m_limits.uploadTime);
    receivePart(exchange.body(m_limits.bytes), exchange.header("Content-Type"), "file",
                [&file](std::span<const char> bytes) { file.append(bytes); });
}

void DictateHandler::answer(Exchange& exchange, TempFile& file, DictationLine::Time begun) {
    exchange.allow(m_limits.duration * workPerDuration);
    AudioDecoder audio(file.descriptor());
    try {
        while (!audio.ready(lookInterval)) {
            if (exchange.peerGone()) {
                return;
            }
        }
    } catch (const AudioError&) {
        throw HttpError(422, "bad_audio", "Не удалось прочитать запись");
    }
    if (audio.announcedDuration() > m_limits.duration) {
        throw HttpError(413, "too_long", "Запись слишком длинная");
    }
    const auto preferences = m_accounts.preferences(exchange.identity().account.id);
    const auto sound = audio.announcedDuration().value_or(usualLength);
    refuseIfBusy(exchange, sound, begun);
    DictationLine::Place place(m_line, exchange.identity().account.id, sound);
    Dictation dictation(
        audio, m_recogniser, place,
        {.language = Language::fromPreference(preferences.transcribeLanguage).value_or(Language()),
         .clean = preferences.cleanupEnabled,
         .spellTerms = preferences.devModeEnabled,
         .longest = m_limits.duration,
         .latestBegin = begun + m_limits.patience});

    auto stream = exchange.openEventStream();
    DictationQueue events;
    // Ends and is waited for when this function is left, whichever way.
    const std::jthread worker([&](const std::stop_token& stop) {
        dictation.run([&](DictationEvent event) { events.push(std::move(event)); }, stop);
    });
    auto lastSign = std::chrono::steady_clock::now();
    while (!m_stop.stop_requested() && !exchange.peerGone()) {
        const auto now = std::chrono::steady_clock::now();
        if (const auto event = events.pop(lookInterval)) {
            if (!std::visit(EventWriter{stream}, *event)) {
                return;
            }
            lastSign = now;
        } else if (now - lastSign >= m_limits.silence) {
            if (!stream.sendComment()) {
                return;
            }
            lastSign = now;
        }
    }
}

} // namespace velmora::server
