#include "accounts/account_store.h"
#include "accounts/database.h"
#include "accounts/session_store.h"
#include "accounts/statement.h"
#include "speech_files.h"
#include "test_clock.h"
#include "test_folder.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

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

TEST_F(SessionStoreTest, RepeatedWithinTheGrace_GetsTheSameAgain) {
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    ASSERT_TRUE(second);
    for (int i = 0; i < 3; ++i) {
        time.now += 29s / 3;
        EXPECT_EQ(sessions.rotate(first.refreshToken), second);
    }
    EXPECT_TRUE(sessions.isAlive(first.id));
    EXPECT_TRUE(sessions.rotate(second->refreshToken));
}

TEST_F(SessionStoreTest, RepeatedWithinTheGrace_SurvivesARestart) {
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    Database reopened(folder.path() / "db");
    EXPECT_EQ(SessionStore(reopened, time.clock()).rotate(first.refreshToken), second);
}

TEST_F(SessionStoreTest, ReusedAfterTheGrace_RevokesTheWholeFamily) {
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    time.now += 30s;
    EXPECT_FALSE(sessions.rotate(first.refreshToken));
    EXPECT_FALSE(sessions.isAlive(first.id));
    EXPECT_FALSE(sessions.rotate(second->refreshToken));
}

TEST_F(SessionStoreTest, RepeatsWithinTheGrace_DoNotProlongIt) {
    const auto first = sessions.open(account);
    static_cast<void>(sessions.rotate(first.refreshToken));
    time.now += 20s;
    EXPECT_TRUE(sessions.rotate(first.refreshToken));
    time.now += 20s;
    EXPECT_FALSE(sessions.rotate(first.refreshToken));
    EXPECT_FALSE(sessions.isAlive(first.id));
}

TEST_F(SessionStoreTest, ReusedOnceItsSuccessorWasUsed_RevokesTheFamilyAtOnce) {
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    const auto third = sessions.rotate(second->refreshToken);
    ASSERT_TRUE(third);
    EXPECT_EQ(sessions.rotate(second->refreshToken), third) << "the last one is in its grace";
    EXPECT_FALSE(sessions.rotate(first.refreshToken));
    EXPECT_FALSE(sessions.isAlive(first.id));
    EXPECT_FALSE(sessions.rotate(third->refreshToken));
}

TEST_F(SessionStoreTest, EndedWithinTheGrace_StaysEnded) {
    const auto first = sessions.open(account);
    static_cast<void>(sessions.rotate(first.refreshToken));
    sessions.revoke(first.id);
    EXPECT_FALSE(sessions.rotate(first.refreshToken));
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

/// All that a thief of the file gets, the journal included.
std::string contentOf(const std::filesystem::path& folder) {
    std::string content;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        content += readFile(entry.path());
    }
    return content;
}

TEST_F(SessionStoreTest, Database_HoldsNoTokenInClear) {
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    const auto third = sessions.rotate(second->refreshToken);
    const auto content = contentOf(folder.path());
    EXPECT_THAT(content, HasSubstr(first.id));
    for (const auto& token : {first.refreshToken, second->refreshToken, third->refreshToken}) {
        EXPECT_THAT(content, Not(HasSubstr(token)));
    }
}

TEST_F(SessionStoreTest, Seeds_AreErasedWithTheGrace_WhoeverComesNext) {
    const auto seeds = [&] {
        return database.transaction([&] {
            auto row = database.prepare("SELECT COUNT(*) FROM refresh_tokens WHERE seed IS NOT NULL");
            row.step();
            return row.integer(0);
        });
    };
    const auto first = sessions.open(account);
    const auto second = sessions.rotate(first.refreshToken);
    EXPECT_EQ(seeds(), 1);
    static_cast<void>(sessions.rotate(second->refreshToken));
    EXPECT_EQ(seeds(), 1);
    time.now += 30s;
    static_cast<void>(sessions.open(account));
    EXPECT_EQ(seeds(), 0);
}

TEST_F(SessionStoreTest, ExpiredTokensOfALivingSession_AreSweptAway) {
    const auto rows = [&] {
        return database.transaction([&] {
            auto row = database.prepare("SELECT COUNT(*) FROM refresh_tokens");
            row.step();
            return row.integer(0);
        });
    };
    auto session = sessions.open(account);
    for (int i = 0; i < 10; ++i) {
        time.now += std::chrono::days(20);
        session = sessions.rotate(session.refreshToken).value();
    }
    EXPECT_EQ(rows(), 3) << "of the last sixty days";
    EXPECT_TRUE(sessions.isAlive(session.id));
}

TEST_F(SessionStoreTest, Sweeping_WalksOverNoTable) {
    for (const std::string sql :
         {SessionStore::sweepSessions, SessionStore::sweepTokens, SessionStore::sweepSeeds}) {
        database.transaction([&] {
            auto plan = database.prepare(("EXPLAIN QUERY PLAN " + sql).c_str());
            while (plan.step()) {
                EXPECT_THAT(plan.text(3), Not(HasSubstr("SCAN"))) << sql;
            }
        });
    }
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
