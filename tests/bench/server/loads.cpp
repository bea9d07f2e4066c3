#include "loads.h"

#include <Poco/Exception.h>
#include <sys/socket.h>

#include <array>
#include <functional>
#include <mutex>

namespace velmora::bench {

using server::Reply;
using server::TestClient;
using server::Tokens;

namespace {

constexpr int accountsPerAddress = 40;
constexpr int uploadsPerAccount = 4;
constexpr std::chrono::milliseconds watchPause{50};
constexpr std::chrono::milliseconds dripPause{250};
/// Two kibibytes a second.
constexpr std::size_t dripSize = 512;

double since(Clock::time_point begin) {
    return milliseconds(begin, Clock::now());
}

/// Asks once; `isGood` decides which replies count.
void ask(Answers& answers, const std::function<Reply()>& request,
         const std::function<bool(const Reply&)>& isGood) {
    const auto begin = Clock::now();
    try {
        const auto reply = request();
        if (isGood(reply)) {
            answers.times.add(since(begin));
        } else {
            ++answers.others[std::to_string(reply.status)];
        }
    } catch (const Poco::Exception& failure) {
        ++answers.others[failure.name()];
    } catch (const std::exception& failure) {
        ++answers.others[failure.what()];
    }
}

/// Runs so many clients at once and puts their answers together.
Answers together(int clients, const std::function<void(Answers&, int)>& client) {
    Answers all;
    std::mutex mutex;
    const auto begin = Clock::now();
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < clients; ++i) {
            threads.emplace_back([&, i] {
                Answers own;
                client(own, i);
                const std::scoped_lock lock(mutex);
                all.add(own);
            });
        }
    }
    all.seconds = since(begin) / 1000;
    return all;
}

bool isOk(const Reply& reply) {
    return reply.status == 200;
}

bool hasText(const Reply& reply) {
    if (!isOk(reply)) {
        return false;
    }
    const auto last = reply.events().back();
    if (last.name != "done" || last.data->getValue<int>("wordCount") == 0) {
        throw std::runtime_error(last.name == "error" ? last.data->getValue<std::string>("code")
                                                      : "no words");
    }
    return true;
}

} // namespace

void Answers::add(const Answers& more) {
    times.add(more.times);
    for (const auto& [what, count] : more.others) {
        others[what] += count;
    }
}

SignUps::SignUps(std::string server, int accounts, int clients) {
    std::mutex mutex;
    answers = together(clients, [&](Answers& own, int first) {
        for (int i = first; i < accounts; i += clients) {
            const TestClient client(server, "127.0.1." + std::to_string(1 + i / accountsPerAddress));
            ask(
                own,
                [&] {
                    const auto made = client.signUp("bench" + std::to_string(i) + "@example.org");
                    const std::scoped_lock lock(mutex);
                    tokens.push_back(made);
                    return Reply{.status = 200, .headers = {}, .body = {}};
                },
                isOk);
        }
    });
}

Answers askForMe(const std::string& server, const Tokens& tokens, int clients,
                 std::chrono::milliseconds time) {
    const auto end = Clock::now() + time;
    return together(clients, [&](Answers& own, int) {
        const TestClient client(server);
        while (Clock::now() < end) {
            ask(
                own, [&] { return client.sendAs(tokens, "GET", "/v1/auth/me"); }, isOk);
        }
    });
}

Answers dictate(const std::string& server, const std::vector<Tokens>& tokens, const std::string& audio) {
    return together(static_cast<int>(tokens.size()), [&](Answers& own, int i) {
        const TestClient client(server);
        ask(
            own, [&] { return client.dictate(tokens[static_cast<std::size_t>(i)], audio); }, hasText);
    });
}

Watch::Watch(std::string server, Tokens tokens)
    : m_thread([this, client = TestClient(server), tokens = std::move(tokens)](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            ask(
                m_answers, [&] { return client.sendAs(tokens, "GET", "/v1/auth/me"); }, isOk);
            std::this_thread::sleep_for(watchPause); // the pace at which it asks
        }
    }) {}

Answers Watch::stop() {
    m_thread.request_stop();
    m_thread.join();
    return m_answers;
}

SlowUploads::SlowUploads(const std::string& server, const std::vector<Tokens>& tokens, int count) {
    const TestClient client(server);
    for (int i = 0; i < count; ++i) {
        const auto& account = tokens.at(static_cast<std::size_t>(i / uploadsPerAccount));
        // All but the end of a request that is too long to end while this lasts.
        const auto request = client.dictationRequest(account, std::string(16 * 1024 * 1024, 'x'));
        m_sockets.push_back(client.connect());
        m_sockets.back().sendBytes(request.data(), 1024);
    }
    m_thread = std::jthread([this](const std::stop_token& stop) {
        const std::string some(dripSize, 'x');
        while (!stop.stop_requested()) {
            m_lost.clear();
            for (const auto& socket : m_sockets) {
                const auto descriptor = socket.impl()->sockfd();
                std::array<char, 12> reply{};
                const auto got = ::recv(descriptor, reply.data(), reply.size(), MSG_PEEK | MSG_DONTWAIT);
                if (got >= 0) {
                    ++m_lost[got == 0 ? "closed" : std::string(reply.data() + 9, 3)];
                } else if (::send(descriptor, some.data(), some.size(), MSG_NOSIGNAL | MSG_DONTWAIT) < 0) {
                    ++m_lost["reset"];
                }
            }
            std::this_thread::sleep_for(dripPause); // the pace of a slow uploader
        }
    });
}

std::map<std::string, int> SlowUploads::stop() {
    m_thread.request_stop();
    m_thread.join();
    return m_lost;
}

} // namespace velmora::bench
