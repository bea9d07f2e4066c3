// Puts velmora-server under load over loopback and prints a table; see docs/performance.md.
#include "loads.h"
#include "machine.h"
#include "server_process.h"
#include "speech_files.h"

#include <cstdio>

using namespace velmora::bench;
using namespace velmora::server;

namespace {

constexpr int dictations = 100;
constexpr int slowUploads = 128;
constexpr int accounts = dictations + slowUploads / 4;
/// What a short request may take beside all this, in milliseconds.
constexpr double shortRequest = 50;

std::string textOf(const std::map<std::string, int>& others) {
    std::string text;
    for (const auto& [what, count] : others) {
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " x " + what;
    }
    return text.empty() ? "-" : text;
}

void print(const char* what, const Answers& answers, const std::string& note) {
    if (answers.times.count() == 0) {
        std::printf("%-44s %6d %9s %9s %9s  %-24s %s\n", what, 0, "-", "-", "-", note.c_str(),
                    textOf(answers.others).c_str());
        return;
    }
    std::printf("%-44s %6zu %9.1f %9.1f %9.1f  %-24s %s\n", what, answers.times.count(),
                answers.times.median(), answers.times.quantile(0.95), answers.times.quantile(1), note.c_str(),
                textOf(answers.others).c_str());
    std::fflush(stdout);
}

std::string rate(const Answers& answers) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.0f/s", answers.perSecond());
    return text.data();
}

/// False if something didn't get its answer, or a short request took too long.
bool printWatch(const char* what, const Answers& answers) {
    print(what, answers, "p95 <= 50 ms");
    return answers.others.empty() && answers.times.quantile(0.95) <= shortRequest;
}

bool measure() {
    const TestFolder folder;
    speakToWav("Hello, the weather is nice today. I am going to the store.", folder.path() / "speech.wav");
    const auto audio = readFile(folder.path() / "speech.wav");
    ServerProcess process({"--listen", "127.0.0.1:0", "--data", (folder.path() / "data").string()});
    const auto server = process.waitForAddress();

    std::printf("%s\n\n%-44s %6s %9s %9s %9s  %-24s %s\n", machine().c_str(), "load", "good", "median ms",
                "p95 ms", "worst ms", "", "refused or failed");
    const SignUps signUps(server, accounts, 4);
    print("sign-ups, 4 clients", signUps.answers, rate(signUps.answers));
    if (signUps.tokens.size() < accounts) {
        return false;
    }
    const auto& watched = signUps.tokens.front();
    for (const int clients : {1, 8, 64}) {
        const auto me = askForMe(server, watched, clients, std::chrono::seconds(10));
        print(("/me, " + std::to_string(clients) + " clients").c_str(), me, rate(me));
    }

    const std::vector<Tokens> speakers(signUps.tokens.begin(), signUps.tokens.begin() + dictations);
    const std::vector<Tokens> dawdlers(signUps.tokens.begin() + dictations, signUps.tokens.end());
    const auto alone = dictate(server, {speakers.front()}, audio);
    print("one dictation alone", alone, "");
    Watch beside(server, watched);
    const auto many = dictate(server, speakers, audio);
    bool good = printWatch("/me beside 100 dictations", beside.stop());
    print("100 dictations at once", many, rate(many));

    SlowUploads uploads(server, dawdlers, slowUploads);
    Watch besideAll(server, watched);
    const auto manyBeside = dictate(server, speakers, audio);
    good &= printWatch("/me beside 128 slow uploads, 100 dictations", besideAll.stop());
    print("100 dictations beside 128 slow uploads", manyBeside, rate(manyBeside));
    const auto lost = uploads.stop();
    std::printf("given up of %d slow uploads: %s\n", slowUploads, textOf(lost).c_str());
    return good && lost.empty() && many.others.empty() && manyBeside.others.empty();
}

} // namespace

int main() {
    try {
        return measure() ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const Poco::Exception& failure) {
        std::fprintf(stderr, "not measured: %s\n", failure.displayText().c_str());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "not measured: %s\n", failure.what());
    }
    return EXIT_FAILURE;
}
