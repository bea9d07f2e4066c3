#include "app/server.h"
#include "attack_files.h"
#include "fake_recogniser.h"
#include "fake_transcription_service.h"
#include "processes.h"
#include "speech/openai_recogniser.h"
#include "speech/pocketsphinx_recogniser.h"
#include "speech/sample_rate.h"
#include "speech/wav.h"
#include "speech_files.h"
#include "test_client.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <array>
#include <csignal>
#include <future>

namespace velmora::server {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using namespace std::chrono_literals;

ServerOptions optionsIn(const TestFolder& folder) {
    ServerOptions options;
    options.listen = "127.0.0.1:0";
    options.data = folder.path() / "data";
    return options;
}

/// What counts as speech.
std::string soundOf(std::chrono::milliseconds time) {
    std::vector<std::int16_t> samples(samplesIn(time));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::int16_t>((i % 50) * 200);
    }
    return wavFile(samples);
}

std::string someSound() {
    return soundOf(2s);
}

std::string textOf(const SentEvent& event, const std::string& key) {
    return event.data->getValue<std::string>(key);
}

std::vector<std::string> openFilesIn(const std::filesystem::path& folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code ignored;
        const auto target = std::filesystem::read_symlink(entry.path(), ignored).string();
        if (target.starts_with(folder.string())) {
            files.push_back(target);
        }
    }
    return files;
}

/// With the real recogniser and real speech.
class DictateSpeechTest : public testing::Test {
protected:
    void expectSentence(const Reply& reply) {
        ASSERT_EQ(reply.status, 200) << reply.body;
        EXPECT_THAT(reply.headers.at("Content-Type"), testing::StartsWith("text/event-stream"));
        std::string names;
        std::string pasted;
        for (const auto& event : reply.events()) {
            names += event.name + " ";
            if (event.name == "chunk") {
                pasted += textOf(event, "delta");
            }
        }
        EXPECT_THAT(names, testing::MatchesRegex("status (chunk )+status done "));
        const auto done = reply.events().back();
        EXPECT_THAT(textOf(done, "text"), testing::StartsWith(pasted));
        EXPECT_THAT(textOf(done, "text"), AllOf(HasSubstr("weather is nice"), testing::EndsWith(".")));
        EXPECT_TRUE(std::isupper(textOf(done, "text").front()));
        EXPECT_GE(done.data->getValue<int>("wordCount"), 8);
    }

    const std::string sentence = "Hello, the weather is nice today. I am going to the store.";
    TestFolder folder;
    Server server{optionsIn(folder), std::make_unique<PocketsphinxRecogniser>()};
    TestClient client{server.address()};
    Tokens tokens = client.signUp("ann@example.org");
};

TEST_F(DictateSpeechTest, Wav_IsRecognised) {
    speakToWav(sentence, folder.path() / "speech.wav");
    expectSentence(client.dictate(tokens, readFile(folder.path() / "speech.wav")));
}

TEST_F(DictateSpeechTest, M4a_IsRecognised_TwoAtOnceAlike) {
    speakToM4a(sentence, folder.path() / "speech.m4a");
    const auto audio = readFile(folder.path() / "speech.m4a");
    const auto dictate = [&] { return client.dictate(tokens, audio); };
    auto one = std::async(std::launch::async, dictate);
    auto other = std::async(std::launch::async, dictate);
    const auto first = one.get();
    expectSentence(first);
    EXPECT_EQ(textOf(other.get().events().back(), "text"), textOf(first.events().back(), "text"));
}

TEST_F(DictateSpeechTest, PhrasesWithAPauseBetween_ComeAsPiecesOneByOne) {
    speakToWav(sentence, folder.path() / "speech.wav");
    const auto speech = readFile(folder.path() / "speech.wav").substr(44);
    std::vector<std::int16_t> samples(speech.size() / 2);
    std::memcpy(samples.data(), speech.data(), samples.size() * 2);
    const auto once = samples;
    samples.insert(samples.end(), samplesIn(1s), 0);
    samples.insert(samples.end(), once.begin(), once.end());
    const auto events = client.dictate(tokens, wavFile(samples)).events();
    const auto chunks = std::ranges::count(events, "chunk", &SentEvent::name);
    EXPECT_GE(chunks, 2);
    EXPECT_THAT(textOf(events[2], "delta"), testing::StartsWith(" "));
}

TEST_F(DictateSpeechTest, RussianAskedOfAnEnglishModel_SaysTheWayOut) {
    EXPECT_EQ(client.sendAs(tokens, "GET", "/v1/me/preferences")
                  .json()
                  ->getValue<std::string>("transcribeLanguage"),
              "auto");
    ASSERT_EQ(client.sendAs(tokens, "PATCH", "/v1/me/preferences", R"({"transcribeLanguage":"ru"})").status,
              200);
    const auto events = client.dictate(tokens, someSound()).events();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].name, "error");
    EXPECT_EQ(textOf(events[0], "code"), "language_not_supported");
    EXPECT_THAT(textOf(events[0], "message"), HasSubstr("«Язык транскрипции»"));

    speakToWav(sentence, folder.path() / "speech.wav");
    for (const std::string language : {"auto", "English"}) {
        ASSERT_EQ(client
                      .sendAs(tokens, "PATCH", "/v1/me/preferences",
                              R"({"transcribeLanguage":")" + language + "\"}")
                      .status,
                  200);
        expectSentence(client.dictate(tokens, readFile(folder.path() / "speech.wav")));
    }
}

TEST_F(DictateSpeechTest, Silence_EndsWithEmptyText) {
    const auto events = client.dictate(tokens, wavFile(std::vector<std::int16_t>(samplesIn(2s)))).events();
    EXPECT_EQ(events.back().name, "done");
    EXPECT_EQ(textOf(events.back(), "text"), "");
    EXPECT_EQ(events.back().data->getValue<int>("wordCount"), 0);
}

/// With recognisers that do as they are told.
class DictateTest : public testing::Test {
protected:
    Server& start(std::unique_ptr<Recogniser> recogniser) {
        server = std::make_unique<Server>(options, std::move(recogniser));
        client.emplace(server->address());
        tokens = client->signUp("ann@example.org");
        return *server;
    }

    /// For tests that stop the process that decodes it: a file could do that by being slow.
    [[nodiscard]] Poco::Net::StreamSocket sendSlowFile() const {
        auto socket = client->connect();
        const auto request = client->dictationRequest(tokens, soundOf(60s));
        socket.sendBytes(request.data(), static_cast<int>(request.size()));
        return socket;
    }

    TestFolder folder;
    ServerOptions options = optionsIn(folder);
    std::unique_ptr<Server> server;
    std::optional<TestClient> client;
    Tokens tokens;
};

TEST_F(DictateTest, CleaningOff_LeavesTheWords) {
    auto recogniser = std::make_unique<FakeRecogniser>();
    recogniser->phrases = {"um hello hello"};
    start(std::move(recogniser));
    ASSERT_EQ(client->sendAs(tokens, "PATCH", "/v1/me/preferences", R"({"cleanupEnabled":false})").status,
              200);
    const auto events = client->dictate(tokens, someSound()).events();
    EXPECT_EQ(textOf(events.back(), "text"), "um hello hello");
}

TEST_F(DictateTest, DeveloperMode_SpellsTermsFromTheNextDictationOn) {
    auto recogniser = std::make_unique<FakeRecogniser>();
    recogniser->phrases = {"push it to github", "push it to github", "push it to github"};
    start(std::move(recogniser));
    const auto set = [&](const std::string& value) {
        const auto reply =
            client->sendAs(tokens, "PATCH", "/v1/me/preferences", R"({"devModeEnabled":)" + value + "}");
        EXPECT_EQ(reply.status, 200);
    };
    const auto dictate = [&] { return client->dictate(tokens, someSound()).events(); };
    EXPECT_EQ(textOf(dictate().back(), "text"), "Push it to github.");
    set("true");
    const auto events = dictate();
    EXPECT_EQ(textOf(events[1], "delta"), "Push it to GitHub");
    EXPECT_EQ(textOf(events.back(), "text"), "Push it to GitHub.");
    set("false");
    EXPECT_EQ(textOf(dictate().back(), "text"), "Push it to github.");
}

TEST_F(DictateTest, LanguageAndDeveloperMode_ReachTheTranscriptionService) {
    FakeTranscriptionService service;
    start(std::make_unique<OpenAiRecogniser>(
        OpenAiRecogniser::Settings{.url = service.url(), .model = "m", .key = {}}));
    const auto dictateWith = [&](const std::string& preferences) {
        EXPECT_EQ(client->sendAs(tokens, "PATCH", "/v1/me/preferences", preferences).status, 200);
        EXPECT_EQ(client->dictate(tokens, someSound()).events().back().name, "done");
        return service.last().fields;
    };
    const auto russian = dictateWith(R"({"transcribeLanguage":"Русский","devModeEnabled":true})");
    EXPECT_EQ(russian.at("language"), "ru");
    EXPECT_THAT(russian.at("prompt"), AllOf(HasSubstr("React, hooks"), HasSubstr("API")));
    const auto english = dictateWith(R"({"transcribeLanguage":"English","devModeEnabled":false})");
    EXPECT_EQ(english.at("language"), "en");
    EXPECT_FALSE(english.contains("prompt"));
    EXPECT_FALSE(dictateWith(R"({"transcribeLanguage":"auto"})").contains("language"));
}

TEST_F(DictateTest, RecogniserFailure_ComesAsErrorEvent) {
    auto recogniser = std::make_unique<FakeRecogniser>();
    recogniser->failWhenOut = true;
    start(std::move(recogniser));
    const auto events = client->dictate(tokens, someSound()).events();
    EXPECT_EQ(events.back().name, "error");
    EXPECT_EQ(textOf(events.back(), "code"), "fake_failure");
    EXPECT_EQ(textOf(events.back(), "message"), "Нарочно");
}

TEST_F(DictateTest, UploadAnnouncedTooLarge_Is413_AndTheAnswerArrives) {
    options.limits.bytes = 1024 * 1024;
    start(std::make_unique<FakeRecogniser>());
    const auto reply = client->dictate(tokens, std::string(4 * 1024 * 1024, 'x'));
    EXPECT_EQ(reply.status, 413);
    EXPECT_EQ(reply.code(), "too_large");
}

TEST_F(DictateTest, ExpiredSession_IsAnsweredThoughTheUploadIsLarge) {
    start(std::make_unique<FakeRecogniser>());
    EXPECT_EQ(client->dictate({"bad", {}}, std::string(8 * 1024 * 1024, 'x')).status, 401);
}

TEST_F(DictateTest, UploadWithoutLength_Is411) {
    start(std::make_unique<FakeRecogniser>());
    const auto reply = client->sendAs(tokens, "POST", "/v1/dictate", {}, {{"Transfer-Encoding", "chunked"}});
    EXPECT_EQ(reply.status, 411);
}

TEST_F(DictateTest, RecordingTooLong_Is413) {
    options.limits.duration = std::chrono::minutes(1);
    start(std::make_unique<FakeRecogniser>());
    const auto reply = client->dictate(tokens, wavFile(std::vector<std::int16_t>(samplesIn(61s))));
    EXPECT_EQ(reply.status, 413);
    EXPECT_EQ(reply.code(), "too_long");
}

TEST_F(DictateTest, WhatIsNoAudio_Is422_AndNoMultipartIs400) {
    start(std::make_unique<FakeRecogniser>());
    const auto noise = client->dictate(tokens, "this is no sound");
    EXPECT_EQ(noise.status, 422);
    EXPECT_EQ(noise.code(), "bad_audio");
    const auto plain =
        client->sendAs(tokens, "POST", "/v1/dictate", "sound", {{"Content-Type", "audio/wav"}});
    EXPECT_EQ(plain.status, 400);
    EXPECT_EQ(plain.code(), "bad_multipart");
}

TEST_F(DictateTest, FileMadeToDoHarm_Is422BeforeAnyEvent_AndOthersAreServed) {
    auto recogniser = std::make_unique<FakeRecogniser>();
    recogniser->phrases = {"hello"};
    start(std::move(recogniser));
    for (const auto& file : {constantFlac(2), constantFlac(3999), filmOfOnePng(2000, 2000),
                             filmOfManySamples(0x04000000), wavWith({1, 2, 3}, 1, 0)}) {
        const auto reply = client->dictate(tokens, file);
        EXPECT_EQ(reply.status, 422);
        EXPECT_EQ(reply.code(), "bad_audio");
        EXPECT_EQ(reply.json()->getValue<std::string>("message"), "Не удалось прочитать запись");
    }
    EXPECT_EQ(textOf(client->dictate(tokens, someSound()).events().back(), "text"), "Hello.");
}

TEST_F(DictateTest, ClientThatGoesAwayWhileItsFileIsOpened_LeavesNoProcessBehind) {
    start(std::make_unique<FakeRecogniser>());
    pid_t process = 0;
    {
        const auto socket = sendSlowFile();
        process = waitForChild();
        ::kill(process, SIGSTOP);
    }
    expectEnd(process);
}

TEST_F(DictateTest, StoppingTheServerWhileAFileIsOpened_LeavesNoProcessBehind) {
    start(std::make_unique<FakeRecogniser>());
    const auto socket = sendSlowFile();
    const auto process = waitForChild();
    ::kill(process, SIGSTOP);
    auto end = std::async(std::launch::async, [&] { server.reset(); });
    EXPECT_EQ(end.wait_for(30s), std::future_status::ready);
    EXPECT_FALSE(isRunning(process));
    ::kill(process, SIGKILL);
}

TEST_F(DictateTest, ClientThatGoesAway_StopsTheWork) {
    auto owned = std::make_unique<StuckRecogniser>();
    auto& recogniser = *owned;
    start(std::move(owned));
    {
        auto socket = client->connect();
        const auto request = client->dictationRequest(tokens, someSound());
        socket.sendBytes(request.data(), static_cast<int>(request.size()));
        ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 1));
        EXPECT_THAT(openFilesIn(options.data / "tmp"), testing::SizeIs(1));
    }
    EXPECT_TRUE(recogniser.waitUntil(recogniser.stopped, 1));
    server.reset();
    EXPECT_THAT(openFilesIn(options.data / "tmp"), testing::IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(options.data / "tmp"));
}

TEST_F(DictateTest, TooManyOfOneAccount_Are429_OthersAreServed) {
    auto owned = std::make_unique<StuckRecogniser>();
    auto& recogniser = *owned;
    options.limits.perAccount = 2;
    start(std::move(owned));
    const auto request = client->dictationRequest(tokens, someSound());
    std::vector<Poco::Net::StreamSocket> sockets;
    for (int i = 0; i < 2; ++i) {
        sockets.push_back(client->connect());
        sockets.back().sendBytes(request.data(), static_cast<int>(request.size()));
    }
    ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 2));
    testing::internal::CaptureStderr();
    EXPECT_EQ(client->dictate(tokens, someSound()).code(), "too_many_dictations");
    EXPECT_THAT(
        testing::internal::GetCapturedStderr(),
        testing::MatchesRegex("velmora-server: dictation refused, too many at once of account [-0-9a-f]+\n"));

    const auto others = client->dictationRequest(client->signUp("bob@example.org"), someSound());
    sockets.push_back(client->connect());
    sockets.back().sendBytes(others.data(), static_cast<int>(others.size()));
    EXPECT_TRUE(recogniser.waitUntil(recogniser.started, 3));
}

/// An account's two minutes are under way, and nothing comes of them.
class BusyDictateTest : public DictateTest {
protected:
    void SetUp() override {
        auto owned = std::make_unique<StuckRecogniser>();
        owned->turns = 1;
        auto& recogniser = *owned;
        options.limits.patience = 30s;
        start(std::move(owned));
        send(tokens, soundOf(2min));
        ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 1));
    }
    Poco::Net::StreamSocket& send(const Tokens& whose, const std::string& audio) {
        const auto request = client->dictationRequest(whose, audio);
        sockets.push_back(client->connect());
        sockets.back().sendBytes(request.data(), static_cast<int>(request.size()));
        return sockets.back();
    }
    static std::string beginningOfReply(Poco::Net::StreamSocket& socket) {
        std::string reply;
        std::array<char, 4096> piece{};
        while (reply.find("\r\n\r\n") == std::string::npos) {
            const auto count = socket.receiveBytes(piece.data(), piece.size());
            if (count <= 0) {
                break;
            }
            reply.append(piece.data(), static_cast<std::size_t>(count));
        }
        return reply;
    }

    std::vector<Poco::Net::StreamSocket> sockets;
};

TEST_F(BusyDictateTest, WaitLongerThanClientsWait_IsRefusedAtOnce) {
    testing::internal::CaptureStderr();
    const auto reply = client->dictate(tokens, someSound());
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("dictation refused, too much to do before"));
    EXPECT_EQ(reply.status, 503);
    EXPECT_EQ(reply.code(), "busy");
    EXPECT_THAT(reply.json()->getValue<std::string>("message"),
                testing::MatchesRegex("Сервер занят другими диктовками. Попробуйте снова через [0-9]+ с"));
    // A minute of work is ahead, and half a minute may go by; the guess at the pace is part of this.
    const auto pause = std::stoi(reply.headers.at("Retry-After"));
    EXPECT_GE(pause, 25);
    EXPECT_LE(pause, 60);
}

TEST_F(BusyDictateTest, Refusal_ComesBeforeTheUpload) {
    auto socket = client->connect();
    const auto request = client->dictationRequest(tokens, std::string(1024 * 1024, 'x'));
    socket.sendBytes(request.data(), static_cast<int>(request.find("\r\n\r\n") + 4));
    EXPECT_THAT(beginningOfReply(socket), testing::StartsWith("HTTP/1.1 503 "));
}

TEST_F(BusyDictateTest, OtherAccounts_AreTaken_UnlessTheirsIsTooLongForThat) {
    const auto bob = client->signUp("bob@example.org");
    EXPECT_EQ(client->dictate(bob, soundOf(2min)).code(), "busy");
    auto& socket = send(bob, someSound());
    EXPECT_THAT(beginningOfReply(socket), testing::StartsWith("HTTP/1.1 200 "));
}

TEST_F(DictateTest, RecordingThatTakesLonger_IsNotRefusedWhileNobodyIsInItsWay) {
    options.limits.patience = 1s;
    start(std::make_unique<FakeRecogniser>());
    EXPECT_EQ(client->dictate(tokens, wavFile(std::vector<std::int16_t>(samplesIn(1min)))).status, 200);
}

TEST_F(DictateTest, StoppingTheServer_StopsTheWork) {
    auto owned = std::make_unique<StuckRecogniser>();
    auto& recogniser = *owned;
    start(std::move(owned));
    auto socket = client->connect();
    const auto request = client->dictationRequest(tokens, someSound());
    socket.sendBytes(request.data(), static_cast<int>(request.size()));
    ASSERT_TRUE(recogniser.waitUntil(recogniser.started, 1));
    // Waits for all work, so it returns only if the recogniser was stopped.
    server.reset();
    char rest[4096];
    while (socket.receiveBytes(rest, sizeof rest) > 0) {
    }
}

} // namespace
} // namespace velmora::server
