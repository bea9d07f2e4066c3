#pragma once

#include "foundation/async_stream.h"
#include "foundation/error.h"
#include "platform/privacy_rights.h"

#include <deque>
#include <set>
#include <vector>

namespace velmora::test {

/// A desktop whose rights the test grants and takes back.
class FakePrivacyRights final : public PrivacyRights {
public:
    [[nodiscard]] bool isGranted(PrivacyRight right) override {
        lookedAt();
        return granted.contains(right);
    }
    Task<bool> probe(PrivacyRight right) override {
        ++probes;
        co_await untilReleased();
        if (probeFails)
            throw PlainError(QStringLiteral("no answer"));
        co_return probeable.contains(right);
    }
    Task<bool> request(PrivacyRight right) override {
        requests.push_back(right);
        co_await untilReleased();
        if (grantsRequests)
            granted.insert(right);
        co_return granted.contains(right);
    }
    void openSettings(PrivacyRight right) override { openedSettings.push_back(right); }

    /// Lets the oldest held answer go.
    void release() {
        AsyncStream<bool>::Producer answer = std::move(heldAnswers.front());
        heldAnswers.pop_front();
        answer.finish();
    }

    std::function<void()> lookedAt = [] {};
    std::set<PrivacyRight> granted;   ///< what is known without asking
    std::set<PrivacyRight> probeable; ///< what a probe finds
    bool probeFails = false;
    bool grantsRequests = false; ///< the user's answer
    bool holdAnswers = false;    ///< probes and requests then wait for release()
    std::deque<AsyncStream<bool>::Producer> heldAnswers;

    int probes = 0;
    std::vector<PrivacyRight> requests;
    std::vector<PrivacyRight> openedSettings;

private:
    Task<> untilReleased() {
        if (!holdAnswers)
            co_return;
        auto [answered, producer] = AsyncStream<bool>::make();
        heldAnswers.push_back(std::move(producer));
        co_await answered.next();
    }
};

} // namespace velmora::test
