#pragma once

#include "samples.h"
#include "test_client.h"

#include <atomic>
#include <chrono>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace velmora::bench {

/// What a load was answered with: how long each took that went well, and how often what else came.
struct Answers {
    Samples times; ///< in milliseconds
    std::map<std::string, int> others;
    double seconds = 0; ///< the whole load

    [[nodiscard]] double perSecond() const { return static_cast<double>(times.count()) / seconds; }
    void add(const Answers& more);
};

/// New accounts, by as many clients at once, from addresses enough that none of them is slowed down.
class SignUps {
public:
    SignUps(std::string server, int accounts, int clients);

    Answers answers;
    std::vector<server::Tokens> tokens;
};

/// GET /v1/auth/me, each over a connection of its own, by so many clients for so long.
[[nodiscard]] Answers askForMe(const std::string& server, const server::Tokens& tokens, int clients,
                               std::chrono::milliseconds time);

/// A recording for each of the accounts, all at once; the time is that to the end of the text.
[[nodiscard]] Answers dictate(const std::string& server, const std::vector<server::Tokens>& tokens,
                              const std::string& audio);

/// Asks for /me again and again while it lives, one client with a pause behind each answer.
class Watch {
public:
    Watch(std::string server, server::Tokens tokens);
    [[nodiscard]] Answers stop();

private:
    Answers m_answers;
    std::jthread m_thread;
};

/// Uploads that never end, four of each account, at a rate just fast enough to be borne.
class SlowUploads {
public:
    SlowUploads(const std::string& server, const std::vector<server::Tokens>& tokens, int count);
    /// How many the server has given up meanwhile, by what it said.
    [[nodiscard]] std::map<std::string, int> stop();

private:
    std::vector<Poco::Net::StreamSocket> m_sockets;
    std::map<std::string, int> m_lost;
    std::jthread m_thread;
};

} // namespace velmora::bench
