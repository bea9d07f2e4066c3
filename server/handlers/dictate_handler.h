#pragma once

#include "http/handler.h"

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
    std::chrono::minutes duration{30};
    /// At once, of one account.
    int perAccount = 4;
    /// For the upload.
    std::chrono::minutes uploadTime{10};
};

/// POST /v1/dictate: a recording in, its text out as server-sent events while it is recognised.
class DictateHandler : public Handler {
public:
    /// `tempFolder` takes the uploads while they are worked on; `stop` ends all work under way.
    DictateHandler(AccountStore& accounts, Recogniser& recogniser, DictationLimits limits,
                   std::filesystem::path tempFolder, std::stop_token stop);

    void handle(Exchange& exchange) override;

private:
    class Turn;

    void receive(Exchange& exchange, TempFile& file) const;
    void answer(Exchange& exchange, TempFile& file);

    AccountStore& m_accounts;
    Recogniser& m_recogniser;
    DictationLimits m_limits;
    std::filesystem::path m_tempFolder;
    std::stop_token m_stop;
    std::mutex m_mutex;
    std::map<std::string, int> m_running;
};

} // namespace velmora::server
