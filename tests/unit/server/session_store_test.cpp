#include "accounts/account_store.h"
#include "accounts/database.h"
#include "accounts/session_store.h"
#include "accounts/statement.h"
#include "test_clock.h"
#include "test_folder.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

class SessionStoreTest : public testing::Test {
protected:
    TestFolder folder;
    TestClock time;
    Database database{folder.path() / "db"};
    AccountStore accounts{database, "ru", time.clock()};
    SessionStore sessions{database, time.clock()};
    std::string account = accounts.create("a@example.org", "hash", false)->id;
};

TEST_F(SessionStoreTest, Opened_IsAlive) {
    const auto session = sessions.open(account);
    EXPECT_TRUE(sessions.isAlive(session.id));
    EXPECT_FALSE(sessions.isAlive("other"));
    EXPECT_GE(session.refreshToken.size(), 43U);
}

TEST_F(SessionStoreTest, Rotation_StaysInTheFamily_AndChangesTheToken) {
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->id, first.id);
    EXPECT_EQ(second->accountId, account);
    EXPECT_NE(second->refreshToken, first.refreshToken);
    EXPECT_TRUE(sessions.rotate(second->refreshToken));
}

TEST_F(SessionStoreTest, ReusedToken_RevokesTheWholeFamily) {
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    EXPECT_FALSE(sessions.rotate(first.refreshToken));
    EXPECT_FALSE(sessions.isAlive(first.id));
    EXPECT_FALSE(sessions.rotate(second->refreshToken));
}

TEST_F(SessionStoreTest, OtherFamilies_SurviveARevocation) {
    const auto one = sessions.open(account);
    const auto other = sessions.open(account);
    sessions.revoke(one.id);
    EXPECT_FALSE(sessions.isAlive(one.id));
    EXPECT_FALSE(sessions.rotate(one.refreshToken));
    EXPECT_TRUE(sessions.isAlive(other.id));
    EXPECT_TRUE(sessions.rotate(other.refreshToken));
}

TEST_F(SessionStoreTest, UnknownToken_IsRefused) {
    EXPECT_FALSE(sessions.rotate(""));
    EXPECT_FALSE(sessions.rotate("guess"));
}

TEST_F(SessionStoreTest, AfterSixtyDays_IsExpired_AndSweptAway) {
    const auto session = sessions.open(account);
    time.now += std::chrono::days(60);
    EXPECT_FALSE(sessions.rotate(session.refreshToken));
    static_cast<void>(sessions.open(account));
    EXPECT_FALSE(sessions.isAlive(session.id));
}

TEST_F(SessionStoreTest, Database_HoldsNoTokenInClear) {
    const auto session = sessions.open(account);
    const auto stored = database.transaction([&] {
        auto row = database.prepare("SELECT hash FROM refresh_tokens");
        row.step();
        return row.text(0);
    });
    EXPECT_FALSE(stored.empty());
    EXPECT_EQ(stored.find(session.refreshToken), std::string::npos);
}

TEST_F(SessionStoreTest, RevokeAll_EndsThoseOfTheAccountAlone) {
    const auto other = accounts.create("b@example.org", "hash", false)->id;
    const auto first = sessions.open(account);
    const auto second = sessions.open(account);
    const auto others = sessions.open(other);
    EXPECT_EQ(sessions.count(account), 2);
    sessions.revokeAll(account);
    EXPECT_FALSE(sessions.isAlive(first.id));
    EXPECT_FALSE(sessions.rotate(second.refreshToken));
    EXPECT_TRUE(sessions.isAlive(others.id));
    EXPECT_EQ(sessions.count(account), 0);
}

TEST_F(SessionStoreTest, Count_LeavesOutWhatHasExpired) {
    static_cast<void>(sessions.open(account));
    time.now += std::chrono::days(30);
    static_cast<void>(sessions.open(account));
    time.now += std::chrono::days(31);
    EXPECT_EQ(sessions.count(account), 1);
}

} // namespace
} // namespace velmora::server
