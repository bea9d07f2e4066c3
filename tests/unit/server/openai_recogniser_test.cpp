#include "fake_transcription_service.h"
#include "speech/openai_recogniser.h"
#include "speech/sample_rate.h"
#include "speech/wav.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using testing::HasSubstr;
using testing::Not;

OpenAiRecogniser::Settings at(const std::string& url) {
    OpenAiRecogniser::Settings settings;
    settings.url = url;
    return settings;
}

class OpenAiRecogniserTest : public testing::Test {
protected:
    std::string recognise(OpenAiRecogniser::Settings settings, const std::string& language,
                          const std::stop_token& stop = {}, const std::string& vocabulary = {}) {
        OpenAiRecogniser recogniser(settings);
        const auto wanted = recogniser.resolve(Language::fromPreference(language).value());
        return recogniser.begin({wanted.value(), vocabulary})->recognise(samples, stop);
    }

    void expectFailure(const std::string& code) {
        try {
            static_cast<void>(recognise(at(service.url()), "auto"));
            ADD_FAILURE();
        } catch (const RecogniserError& error) {
            EXPECT_EQ(error.code(), code);
        }
    }

    FakeTranscriptionService service;
    std::vector<std::int16_t> samples = std::vector<std::int16_t>(1000, 7);
};

TEST_F(OpenAiRecogniserTest, Request_HasSoundModelLanguageAndKey) {
    service.reply = R"({"text":"Привет, мир.","usage":{"seconds":1}})";
    EXPECT_EQ(recognise({.url = service.url(), .model = "large", .key = "secret"}, "ru"), "Привет, мир.");
    const auto request = service.last();
    EXPECT_EQ(request.path, "/v1/audio/transcriptions");
    EXPECT_EQ(request.authorization, "Bearer secret");
    EXPECT_EQ(request.fields.at("model"), "large");
    EXPECT_EQ(request.fields.at("language"), "ru");
    EXPECT_EQ(request.file, wavFile(samples));
}

TEST_F(OpenAiRecogniserTest, AutomaticLanguageAndNoKey_AreLeftOut) {
    static_cast<void>(recognise(at(service.url()), "auto"));
    const auto request = service.last();
    EXPECT_EQ(request.authorization, "");
    EXPECT_FALSE(request.fields.contains("language"));
    EXPECT_EQ(request.fields.at("model"), "whisper-1");
}

TEST_F(OpenAiRecogniserTest, Vocabulary_IsThePrompt_AndWithoutOneThereIsNone) {
    static_cast<void>(recognise(at(service.url()), "ru", {}, "React, хуки"));
    EXPECT_EQ(service.last().fields.at("prompt"), "React, хуки");
    static_cast<void>(recognise(at(service.url()), "ru"));
    EXPECT_FALSE(service.last().fields.contains("prompt"));
}

TEST_F(OpenAiRecogniserTest, Url_MayBeBaseOrEndpoint) {
    for (const auto& [suffix, path] : std::map<std::string, std::string>{
             {"", "/v1/audio/transcriptions"},
             {"/", "/v1/audio/transcriptions"},
             {"/v1", "/v1/audio/transcriptions"},
             {"/v1/", "/v1/audio/transcriptions"},
             {"/proxy/openai/v1", "/proxy/openai/v1/audio/transcriptions"},
             {"/v1/audio/transcriptions", "/v1/audio/transcriptions"},
             {"/v1/audio/transcriptions?api=2", "/v1/audio/transcriptions?api=2"}}) {
        static_cast<void>(recognise(at(service.url() + suffix), "auto"));
        EXPECT_EQ(service.last().path, path) << suffix;
    }
}

TEST_F(OpenAiRecogniserTest, Refusals_HaveCodesOfTheirOwn) {
    service.status = 401;
    expectFailure("recogniser_refused");
    service.status = 429;
    expectFailure("recogniser_busy");
    service.status = 500;
    expectFailure("recogniser_failed");
}

TEST_F(OpenAiRecogniserTest, ReplyThatIsNone_IsUnavailable) {
    for (const std::string reply : {"", "no json", "[]", "{}", R"({"text":)"}) {
        service.reply = reply;
        expectFailure("recogniser_unavailable");
    }
}

TEST_F(OpenAiRecogniserTest, NobodyThere_IsUnavailable) {
    service.stop();
    expectFailure("recogniser_unavailable");
}

TEST_F(OpenAiRecogniserTest, Stop_EndsAWaitingRequest) {
    service.hold();
    std::stop_source stop;
    std::jthread stopper([&] {
        service.waitForRequest();
        stop.request_stop();
    });
    EXPECT_EQ(recognise(at(service.url()), "auto", stop.get_token()), "");
}

TEST_F(OpenAiRecogniserTest, Connection_IsUsedAgain_AfterRefusalsToo) {
    OpenAiRecogniser recogniser(at(service.url()));
    const auto recognition = recogniser.begin({Language(), {}});
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(recognition->recognise(samples, {}), "words");
    }
    service.status = 429;
    EXPECT_THROW(static_cast<void>(recognition->recognise(samples, {})), RecogniserError);
    service.status = 200;
    EXPECT_EQ(recogniser.begin({Language(), {}})->recognise(samples, {}), "words");
    EXPECT_EQ(service.connections(), 1);
}

TEST_F(OpenAiRecogniserTest, ConnectionThatTheServiceClosed_IsReplacedInSilence) {
    OpenAiRecogniser recogniser(at(service.url()));
    const auto recognition = recogniser.begin({Language(), {}});
    EXPECT_EQ(recognition->recognise(samples, {}), "words");
    service.restart();
    EXPECT_EQ(recognition->recognise(samples, {}), "words");
    service.hangUpNext();
    EXPECT_EQ(recognition->recognise(samples, {}), "words") << "it was closed while it was being used again";
}

TEST_F(OpenAiRecogniserTest, NewConnectionThatBreaks_IsUnavailable_AndNotTriedForEver) {
    service.hangUpNext();
    expectFailure("recogniser_unavailable");
    EXPECT_EQ(recognise(at(service.url()), "auto"), "words");
}

TEST_F(OpenAiRecogniserTest, PiecesAtOnce_AreAsManyAsConnections) {
    auto settings = at(service.url());
    EXPECT_EQ(OpenAiRecogniser(settings).atOnce(), 4U);
    settings.connections = 7;
    EXPECT_EQ(OpenAiRecogniser(settings).atOnce(), 7U);
}

TEST_F(OpenAiRecogniserTest, OddUrls_AreRefused) {
    for (const std::string url : {"", "host.example", "ftp://host", "http://", "file:///etc/passwd"}) {
        EXPECT_THROW(OpenAiRecogniser(at(url)), std::runtime_error) << url;
    }
}

} // namespace
} // namespace velmora::server
