#pragma once

#include "speech/recogniser.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace velmora::server {

/// Knows English and Russian, and says the given phrases in turn, one for each piece.
struct FakeRecogniser : Recogniser {
    struct Turn : Recognition {
        explicit Turn(FakeRecogniser& theOwner)
            : owner(theOwner) {}

        std::string recognise(std::span<const std::int16_t> /*samples*/,
                              const std::stop_token& /*stop*/) override {
            const std::scoped_lock lock(owner.mutex);
            if (owner.phrases.empty()) {
                if (owner.failWhenOut) {
                    throw RecogniserError("fake_failure", "Нарочно");
                }
                return {};
            }
            auto phrase = owner.phrases.front();
            owner.phrases.pop_front();
            return phrase;
        }

        FakeRecogniser& owner;
    };

    std::optional<Language> resolve(const Language& wanted) const override {
        return wanted.isAutomatic() || wanted.code() == "en" || wanted.code() == "ru" ? std::optional(wanted)
                                                                                      : std::nullopt;
    }
    PieceLimits pieceLimits() const override { return {}; }
    unsigned atOnce() const override { return 4; }
    std::unique_ptr<Recognition> begin(const Expectation& /*expectation*/) override {
        return std::make_unique<Turn>(*this);
    }

    std::mutex mutex;
    std::deque<std::string> phrases;
    bool failWhenOut = false;
};

/// Works on each piece until it is stopped, and tells when that was.
struct StuckRecogniser : Recogniser {
    struct Turn : Recognition {
        explicit Turn(StuckRecogniser& theOwner)
            : owner(theOwner) {}

        std::string recognise(std::span<const std::int16_t> /*samples*/,
                              const std::stop_token& stop) override {
            std::unique_lock lock(owner.mutex);
            ++owner.started;
            owner.changed.notify_all();
            owner.changed.wait(lock, stop, [] { return false; });
            ++owner.stopped;
            owner.changed.notify_all();
            return {};
        }

        StuckRecogniser& owner;
    };

    std::optional<Language> resolve(const Language& wanted) const override { return wanted; }
    PieceLimits pieceLimits() const override { return {}; }
    unsigned atOnce() const override { return turns; }
    std::unique_ptr<Recognition> begin(const Expectation& /*expectation*/) override {
        return std::make_unique<Turn>(*this);
    }

    [[nodiscard]] bool waitUntil(const int& counter, int value) {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(20), [&] { return counter >= value; });
    }

    std::mutex mutex;
    std::condition_variable_any changed;
    unsigned turns = 4;
    int started = 0;
    int stopped = 0;
};

/// Works on one piece at a time, once it is let, and remembers the languages in which it was asked.
struct SlowRecogniser : Recogniser {
    struct Turn : Recognition {
        Turn(SlowRecogniser& theOwner, std::string theLanguage)
            : owner(theOwner)
            , language(std::move(theLanguage)) {}

        std::string recognise(std::span<const std::int16_t> /*samples*/,
                              const std::stop_token& stop) override {
            std::unique_lock lock(owner.mutex);
            owner.languages.push_back(language);
            owner.busiest = std::max(owner.busiest, ++owner.atWork);
            owner.changed.notify_all();
            owner.changed.wait(lock, stop, [this] { return owner.released > 0; });
            --owner.released;
            --owner.atWork;
            return "word";
        }

        SlowRecogniser& owner;
        std::string language;
    };

    std::optional<Language> resolve(const Language& wanted) const override { return wanted; }
    PieceLimits pieceLimits() const override { return {}; }
    unsigned atOnce() const override { return 1; }
    std::unique_ptr<Recognition> begin(const Expectation& expectation) override {
        return std::make_unique<Turn>(*this, expectation.language.code());
    }

    void release(int pieces) {
        const std::scoped_lock lock(mutex);
        released += pieces;
        changed.notify_all();
    }

    std::mutex mutex;
    std::condition_variable_any changed;
    int released = 0;
    int atWork = 0;
    int busiest = 0;
    std::vector<std::string> languages;
};

} // namespace velmora::server
