#include "app/server_options.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <fstream>

namespace velmora::server {
namespace {

ServerOptions parse(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--data", "/data"});
    return ServerOptions::parse(arguments);
}

void expectRefused(const std::vector<std::string>& arguments, const std::string& reason) {
    try {
        static_cast<void>(parse(arguments));
        ADD_FAILURE() << "accepted, expected: " << reason;
    } catch (const OptionError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(reason));
    }
}

TEST(ServerOptions, Nothing_GivesTheDefaults) {
    const auto options = parse({});
    EXPECT_EQ(options.action, ServerOptions::Action::Serve);
    EXPECT_EQ(options.listen, "127.0.0.1:8791");
    EXPECT_EQ(options.data, "/data");
    EXPECT_FALSE(options.openAi);
    EXPECT_FALSE(options.language);
    EXPECT_FALSE(options.localUser);
    EXPECT_EQ(options.limits.bytes, 64ULL * 1024 * 1024);
    EXPECT_EQ(options.limits.duration, std::chrono::minutes(30));
}

TEST(ServerOptions, BothSpellings_AreRead) {
    EXPECT_EQ(parse({"--listen", "[::1]:0"}).listen, "[::1]:0");
    EXPECT_EQ(parse({"--listen=[::1]:0"}).listen, "[::1]:0");
}

TEST(ServerOptions, EveryOption_IsRead) {
    const auto options = parse({"--language=en", "--host", "a.example", "--host=b.example", "--max-upload",
                                "5", "--max-duration=7", "--recogniser", "pocketsphinx"});
    EXPECT_EQ(options.language, "en");
    EXPECT_TRUE(parse({"--local-user"}).localUser);
    EXPECT_THAT(options.hosts, testing::ElementsAre("a.example", "b.example"));
    EXPECT_EQ(options.limits.bytes, 5ULL * 1024 * 1024);
    EXPECT_EQ(options.limits.duration, std::chrono::minutes(7));
}

TEST(ServerOptions, OpenAi_TakesModelAndKeyFile) {
    const TestFolder folder;
    const auto file = folder.path() / "key";
    std::ofstream(file) << "  secret \n";
    const auto options =
        parse({"--recogniser", "openai=https://host.example/v1,model=large,key-file=" + file.string()});
    ASSERT_TRUE(options.openAi);
    EXPECT_EQ(options.openAi->url, "https://host.example/v1");
    EXPECT_EQ(options.openAi->model, "large");
    EXPECT_EQ(options.openAi->key, "secret");
    const auto bare = parse({"--recogniser=openai=http://127.0.0.1:9"});
    EXPECT_EQ(bare.openAi->key, "");
    EXPECT_EQ(bare.openAi->connections, 4U);
    EXPECT_EQ(parse({"--recogniser=openai=http://127.0.0.1:9,connections=12"}).openAi->connections, 12U);
}

TEST(ServerOptions, BadOnes_AreRefusedWithTheReason) {
    expectRefused({"--bogus"}, "unknown option --bogus");
    expectRefused({"extra"}, "unknown option extra");
    expectRefused({"--listen="}, "--listen needs a value");
    expectRefused({"--listen", "nowhere"}, "--listen");
    expectRefused({"--listen", "127.0.0.1:99999"}, "--listen");
    expectRefused({"--recogniser", "magic"}, "--recogniser");
    expectRefused({"--recogniser", "openai="}, "--recogniser");
    expectRefused({"--recogniser", "openai=ftp://host"}, "not an http or https URL");
    expectRefused({"--recogniser", "openai=http://host,connections=0"}, "connections: not a positive number");
    expectRefused({"--recogniser", "openai=http://host,colour=red"}, "unknown part colour=red");
    expectRefused({"--recogniser", "openai=http://host,key-file=/nonexistent/key"}, "no key in file");
    expectRefused({"--language", "not a language"}, "--language");
    expectRefused({"--local-user=yes"}, "--local-user takes no value");
    expectRefused({"--max-upload", "0"}, "--max-upload");
    expectRefused({"--max-duration", "long"}, "--max-duration");
    EXPECT_THROW(static_cast<void>(ServerOptions::parse({"--data"})), OptionError);
}

TEST(ServerOptions, LocalUserBeyondLoopback_IsRefused) {
    expectRefused({"--local-user", "--listen", "0.0.0.0:8791"}, "--local-user");
}

TEST(ServerOptions, LocalUserUnderAPublicName_IsRefused) {
    expectRefused({"--local-user", "--host", "voice.example.org"}, "exclude each other");
}

TEST(ServerOptions, HelpAndVersion_NeedNothingElse) {
    EXPECT_EQ(ServerOptions::parse({"--help"}).action, ServerOptions::Action::ShowHelp);
    EXPECT_EQ(ServerOptions::parse({"--version"}).action, ServerOptions::Action::ShowVersion);
    for (const std::string option : {"--listen", "--data", "--recogniser", "--language", "--local-user",
                                     "--host", "--max-upload", "--max-duration", "--help", "--version"}) {
        EXPECT_THAT(ServerOptions::help(), testing::HasSubstr(option));
    }
}

} // namespace
} // namespace velmora::server
