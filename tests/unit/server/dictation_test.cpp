#include "fake_recogniser.h"
#include "processes.h"
#include "speech/audio_decoder.h"
#include "speech/dictation.h"
#include "speech/sample_rate.h"
#include "speech/temp_file.h"
#include "speech/wav.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <future>
#include <thread>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// Two phrases of two seconds, each with a second of silence behind it.
std::string twoPhrases() {
    std::vector<std::int16_t> samples;
    for (int phrase = 0; phrase < 2; ++phrase) {
        for (std::size_t i = 0; i < samplesIn(3s); ++i) {
            samples.push_back(static_cast<std::int16_t>(i < samplesIn(2s) ? (i % 50) * 200 : 0));
        }
    }
    return wavFile(samples);
}

class DictationTest : public testing::Test {
protected:
    std::vector<DictationEvent> run(const std::stop_token& stop = {}) {
        TempFile file(folder.path());
        file.append(twoPhrases());
        AudioDecoder audio(file.descriptor());
        std::vector<DictationEvent> events;
        DictationLine::Place place(line, "account", 6s);
        Dictation(audio, recogniser, place, settings)
            .run([&](const DictationEvent& event) { events.push_back(event); }, stop);
        return events;
    }

    TestFolder folder;
    FakeRecogniser recogniser;
    DictationLine line{1};
    Dictation::Settings settings{.language = {}, .clean = true, .longest = 30min};
};

TEST_F(DictationTest, StoppedWhileItWaitsForSound_Ends) {
    TempFile file(folder.path());
    file.append(wavFile(std::vector<std::int16_t>(samplesIn(60s))));
    AudioDecoder audio(file.descriptor());
    const auto process = waitForChild();
    ::kill(process, SIGSTOP);
    DictationLine::Place place(line, "account", 60s);
    Dictation dictation(audio, recogniser, place, settings);
    std::stop_source stop;
    auto end = std::async(std::launch::async, [&] { dictation.run([](const auto&) {}, stop.get_token()); });
    EXPECT_EQ(end.wait_for(200ms), std::future_status::timeout);
    stop.request_stop();
    EXPECT_EQ(end.wait_for(30s), std::future_status::ready);
    ::kill(process, SIGKILL);
}

TEST_F(DictationTest, Phrases_ComeOneByOne_AndAreTheBeginningOfTheText) {
    recogniser.phrases = {"um hello hello world", "how are you"};
    EXPECT_THAT(run(), ElementsAre(DictationStage{"transcribing"}, DictationText{"Hello world"},
                                   DictationText{" how are you"}, DictationStage{"cleaning"},
                                   DictationDone{"Hello world how are you.", 5}));
}

TEST_F(DictationTest, WithoutCleaning_TheWordsStayAsTheyWere) {
    recogniser.phrases = {" um hello hello  world", "how are you\n"};
    settings.clean = false;
    EXPECT_THAT(run(), ElementsAre(DictationStage{"transcribing"}, DictationText{"um hello hello world"},
                                   DictationText{" how are you"},
                                   DictationDone{"um hello hello world how are you", 7}));
}

TEST_F(DictationTest, Terms_AreSpelledInPiecesAndTextAlike_AndCountedAsWritten) {
    recogniser.phrases = {"um my java script is on github", "и реакт"};
    settings.spellTerms = true;
    EXPECT_THAT(run(),
                ElementsAre(DictationStage{"transcribing"}, DictationText{"My JavaScript is on GitHub"},
                            DictationText{" и React"}, DictationStage{"cleaning"},
                            DictationDone{"My JavaScript is on GitHub и React.", 7}));
}

TEST_F(DictationTest, TermSplitBetweenPieces_StaysTwoWords) {
    recogniser.phrases = {"in java", "script"};
    settings.spellTerms = true;
    settings.clean = false;
    EXPECT_THAT(run(), ElementsAre(DictationStage{"transcribing"}, DictationText{"in Java"},
                                   DictationText{" script"}, DictationDone{"in Java script", 3}));
}

TEST_F(DictationTest, NothingSaid_EndsWithEmptyText) {
    recogniser.phrases = {"", "uh"};
    EXPECT_THAT(
        run(), ElementsAre(DictationStage{"transcribing"}, DictationStage{"cleaning"}, DictationDone{"", 0}));
}

TEST_F(DictationTest, UnknownLanguage_SaysTheWayOut) {
    settings.language = Language::fromPreference("fr").value();
    const auto events = run();
    ASSERT_EQ(events.size(), 1U);
    const auto& failure = std::get<DictationFailed>(events[0]);
    EXPECT_EQ(failure.code, "language_not_supported");
    EXPECT_THAT(failure.message,
                testing::StartsWith("Сервер не знает этого языка. Выберите «English» или «Авто»"));
}

TEST_F(DictationTest, TooLong_Fails) {
    settings.longest = 4s;
    recogniser.phrases = {"one", "two"};
    const auto events = run();
    EXPECT_EQ(std::get<DictationFailed>(events.back()).code, "too_long");
}

TEST_F(DictationTest, FailureAfterThePhrase_KeepsTheCodeOfTheRecogniser) {
    recogniser.phrases = {"one"};
    recogniser.failWhenOut = true;
    EXPECT_THAT(run(), ElementsAre(DictationStage{"transcribing"}, DictationText{"One"},
                                   DictationFailed{"fake_failure", "Нарочно"}));
}

TEST_F(DictationTest, TurnThatComesTooLate_IsNotWaitedFor) {
    DictationLine::Place other(line, "other", 1s);
    const auto turn = other.turn(1s, {}, DictationLine::Time::max());
    settings.latestBegin = std::chrono::steady_clock::now() + 20ms;
    const auto events = run();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0], DictationEvent(DictationStage{"transcribing"}));
    EXPECT_EQ(std::get<DictationFailed>(events[1]).code, "busy");
    EXPECT_THAT(std::get<DictationFailed>(events[1]).message, testing::StartsWith("Сервер занят"));
}

/// Many at once, each on a thread of its own, before one recogniser. The language says whose it is.
class DictationsTest : public testing::Test {
protected:
    void start(const std::string& account, const std::string& language) {
        const auto waiting = line.waiting();
        threads.emplace_back([this, account, language] {
            TempFile file(folder.path());
            file.append(twoPhrases());
            AudioDecoder audio(file.descriptor());
            DictationLine::Place place(line, account, 6s);
            Dictation(audio, recogniser, place,
                      {.language = Language::fromPreference(language).value(), .longest = 30min})
                .run([](const DictationEvent& /*event*/) {}, {});
        });
        waitUntil(1, waiting + (threads.size() == 1 ? 0 : 1));
    }

    /// Until the last of so many pieces is at work, and so many are in the line.
    void waitUntil(std::size_t pieces, std::size_t waiting) {
        const auto patience = std::chrono::steady_clock::now() + 30s;
        const auto isSo = [&] {
            const std::scoped_lock lock(recogniser.mutex);
            return recogniser.atWork == 1 && recogniser.languages.size() == pieces &&
                   line.waiting() == waiting;
        };
        while (!isSo() && std::chrono::steady_clock::now() < patience) {
            std::this_thread::yield();
        }
        ASSERT_TRUE(isSo());
    }

    TestFolder folder;
    SlowRecogniser recogniser;
    DictationLine line{recogniser.atOnce()};
    std::vector<std::jthread> threads;
};

TEST_F(DictationsTest, Turn_IsForAPiece_AndNotForAWholeDictation) {
    start("ann", "en");
    start("bob", "ru");
    for (const std::size_t piece : {2U, 3U}) {
        recogniser.release(1);
        // Who had the turn is back with the next piece.
        waitUntil(piece, 1);
    }
    recogniser.release(2);
    threads.clear();
    EXPECT_THAT(recogniser.languages, ElementsAre("en", "ru", "en", "ru"));
    EXPECT_EQ(recogniser.busiest, 1);
}

TEST_F(DictationsTest, TwentyOfOneAccount_DoNotDelayTheFirstOfAnother) {
    start("ann", "en");
    for (int i = 0; i < 20; ++i) {
        start("ann", "en");
    }
    start("bob", "ru");
    recogniser.release(2 * 22);
    threads.clear();
    ASSERT_EQ(recogniser.languages.size(), 2U * 22);
    EXPECT_EQ(recogniser.languages[1], "ru");
}

TEST_F(DictationTest, Stopped_SaysNothingMore) {
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THAT(run(stop.get_token()), ElementsAre(DictationStage{"transcribing"}));
}

} // namespace
} // namespace velmora::server
