#pragma once

#include "app/rare_log.h"
#include "http/handler.h"
#include "speech/dictation_line.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <stop_token>
#include <string>

namespace velmora::server {

class AccountStore;
class EventStream;
class Recogniser;
class TempFile;

/// What one dictation may take.
struct DictationLimits {
    std::uint64_t bytes = 64ULL * 1024 * 1024;
    std::chrono::milliseconds duration = std::chrono::minutes(30);
    /// At once, of one account.
    int perAccount = 4;
    /// For the upload.
    std::chrono::milliseconds uploadTime = std::chrono::minutes(10);
    /// Clients give up after three minutes, the upload included. What can't be done by then is refused.
    std::chrono::milliseconds patience = std::chrono::seconds(170);
    /// Without an event, after which a sign of life is sent: clients give up on a reply that is silent for
    /// long.
    std::chrono::milliseconds silence{10'000};
};

/// POST /v1/dictate: a recording in, its text out as server-sent events while it is recognised.
class DictateHandler : public Handler {
public:
    /// `tempFolder` takes the uploads while they are worked on; `stop` ends all work under way.
    DictateHandler(AccountStore& accounts, Recogniser& recogniser, DictationLimits limits,
                   std::filesystem::path tempFolder, std::stop_token stop);

    [[nodiscard]] Work work() const override { return Work::Stream; }
    void handle(Exchange& exchange) override;

private:
    class Share;

    void refuseIfBusy(Exchange& exchange, std::chrono::milliseconds sound, DictationLine::Time begun);
    void receive(Exchange& exchange, TempFile& file) const;
    void answer(Exchange& exchange, TempFile& file, DictationLine::Time begun);

    AccountStore& m_accounts;
    Recogniser& m_recogniser;
    DictationLimits m_limits;
    std::filesystem::path m_tempFolder;
    std::stop_token m_stop;
    DictationLine m_line;
    RareLog m_refusals;
    std::mutex m_mutex;
    std::map<std::string, int> m_running;
};

} // namespace velmora::server
