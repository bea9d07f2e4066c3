#include "descriptor_rlimit.h"
#include "raw_client.h"
#include "server_process.h"
#include "test_client.h"
#include "test_folder.h"

#include <Poco/Net/ServerSocket.h>
#include <gmock/gmock.h>

#include <csignal>

namespace velmora::server {
namespace {

using testing::HasSubstr;

/// The real program.
class ServerProcessTest : public testing::Test {
protected:
    // A recogniser that needs no model keeps the starts short; nothing here dictates.
    [[nodiscard]] std::vector<std::string> arguments() const {
        return {"--listen",     "127.0.0.1:0",
                "--data",       (folder.path() / "data").string(),
                "--recogniser", "openai=http://127.0.0.1:9"};
    }

    TestFolder folder;
};

TEST_F(ServerProcessTest, KilledInTheMiddle_HasKeptWhatItConfirmed) {
    Tokens tokens;
    {
        ServerProcess process(arguments());
        const TestClient client(process.waitForAddress());
        tokens = client.signUp("ann@example.org");
        ASSERT_EQ(client.sendAs(tokens, "PATCH", "/v1/me/preferences", R"({"devModeEnabled":true})").status,
                  200);
        process.signal(SIGKILL);
        EXPECT_EQ(process.waitForEnd().signal, SIGKILL);
    }
    ServerProcess process(arguments());
    const TestClient client(process.waitForAddress());
    // The same key, the same session, the same preferences; and the password still counts.
    const auto me = client.sendAs(tokens, "GET", "/v1/auth/me");
    ASSERT_EQ(me.status, 200);
    EXPECT_TRUE(me.json()->getObject("preferences")->getValue<bool>("devModeEnabled"));
    EXPECT_EQ(client.send("POST", "/v1/auth/refresh", R"({"refreshToken":")" + tokens.refresh + "\"}").status,
              200);
    EXPECT_EQ(client.submitForm("s", "action=sign_in&email=ann@example.org&password=long+enough").status,
              200);
}

TEST_F(ServerProcessTest, TermAndInterrupt_EndItCleanly) {
    for (const int signal : {SIGTERM, SIGINT}) {
        ServerProcess process(arguments());
        process.waitForAddress();
        process.signal(signal);
        EXPECT_EQ(process.waitForEnd().code, 0);
    }
}

TEST_F(ServerProcessTest, Data_IsForTheOwnerAlone) {
    ServerProcess process(arguments());
    process.waitForAddress();
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path() / "data")) {
        const auto others = std::filesystem::perms::group_all | std::filesystem::perms::others_all;
        EXPECT_EQ(entry.status().permissions() & others, std::filesystem::perms::none) << entry.path();
    }
}

TEST_F(ServerProcessTest, FewDescriptors_AreRaisedToWhatIsGranted) {
    std::optional<ServerProcess> process;
    {
        const DescriptorRlimit limit(192);
        process.emplace(arguments());
    }
    const auto address = process->waitForAddress();
    std::vector<RawClient> clients;
    for (int i = 0; i < 60; ++i) {
        clients.emplace_back(address);
    }
    EXPECT_EQ(TestClient(address).send("GET", "/v1/nothing").status, 404);
    EXPECT_FALSE(clients.front().hasReply());
}

TEST_F(ServerProcessTest, BadOption_IsExplained_AndExits2) {
    ServerProcess process({"--listen", "nowhere"});
    EXPECT_EQ(process.waitForEnd().code, 2);
    EXPECT_THAT(process.errors(), HasSubstr("--listen: not an address with a port: nowhere"));
}

TEST_F(ServerProcessTest, TakenPort_IsExplained_AndExits1) {
    const Poco::Net::ServerSocket taken(Poco::Net::SocketAddress("127.0.0.1", 0));
    auto options = arguments();
    options[1] = taken.address().toString();
    ServerProcess process(options);
    EXPECT_EQ(process.waitForEnd().code, 1);
    EXPECT_THAT(process.errors(), HasSubstr("cannot listen on " + taken.address().toString()));
}

TEST_F(ServerProcessTest, HelpAndVersion_ArePrinted) {
    ServerProcess help({"--help"});
    EXPECT_EQ(help.waitForEnd().code, 0);
    EXPECT_THAT(help.output(), HasSubstr("--recogniser"));
    ServerProcess version({"--version"});
    EXPECT_EQ(version.waitForEnd().code, 0);
    EXPECT_THAT(version.output(), testing::StartsWith("velmora-server "));
}

TEST_F(ServerProcessTest, ReusedAndForgedTokens_LeaveALine_ThatHoldsNoSecret) {
    ServerProcess process(arguments());
    const TestClient client(process.waitForAddress());
    const auto tokens = client.signUp("ann@example.org");
    const auto account =
        client.sendAs(tokens, "GET", "/v1/auth/me").json()->getObject("user")->getValue<std::string>("id");
    EXPECT_EQ(process.errors(), "") << "there is nothing to tell of what is usual";
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(client.sendAs({tokens.access + "AAAA", {}}, "GET", "/v1/auth/me").status, 401);
    }
    auto newest = tokens.refresh;
    for (int i = 0; i < 2; ++i) {
        const auto reply = client.send("POST", "/v1/auth/refresh", R"({"refreshToken":")" + newest + "\"}");
        ASSERT_EQ(reply.status, 200);
        newest = reply.json()->getValue<std::string>("refreshToken");
    }
    EXPECT_EQ(client.send("POST", "/v1/auth/refresh", R"({"refreshToken":")" + tokens.refresh + "\"}").status,
              401);
    process.signal(SIGTERM);
    ASSERT_EQ(process.waitForEnd().code, 0);
    EXPECT_EQ(process.errors(),
              "velmora-server: an access token that was not made here, from 127.0.0.1\n"
              "velmora-server: a refresh token came a second time: ended a session of account " +
                  account + "\n");
}

TEST_F(ServerProcessTest, Secrets_StayOutOfTheLog) {
    ServerProcess process(arguments());
    const TestClient client(process.waitForAddress());
    const auto tokens = client.signUp("ann@example.org");
    static_cast<void>(client.sendAs(tokens, "GET", "/v1/auth/me"));
    static_cast<void>(client.dictate(tokens, "no sound"));
    static_cast<void>(client.sendAs({tokens.access + "x", {}}, "GET", "/v1/auth/me"));
    process.signal(SIGTERM);
    ASSERT_EQ(process.waitForEnd().code, 0);
    const auto said = process.output() + process.errors();
    for (const auto& secret : {tokens.access, tokens.refresh, std::string("long"), std::string("ann@")}) {
        EXPECT_EQ(said.find(secret), std::string::npos) << said;
    }
}

} // namespace
} // namespace velmora::server
