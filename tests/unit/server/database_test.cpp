#include "accounts/database.h"
#include "accounts/session_store.h"
#include "accounts/statement.h"
#include "test_clock.h"
#include "test_folder.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

namespace velmora::server {
namespace {

class DatabaseTest : public testing::Test {
protected:
    void executeDirectly(const std::string& sql) {
        sqlite3* connection = nullptr;
        ASSERT_EQ(sqlite3_open(file.c_str(), &connection), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(connection);
        sqlite3_close(connection);
    }

    TestFolder folder;
    std::filesystem::path file = folder.path() / "db";
    TestClock time;
};

TEST_F(DatabaseTest, FileOfTheFirstVersion_IsBroughtUpToDate_AndKeepsItsSessions) {
    // As the server 0.1.0 wrote it; the two hashes are those of the tokens "used" and "newest".
    executeDirectly(R"(
CREATE TABLE accounts (id TEXT PRIMARY KEY, email TEXT NOT NULL UNIQUE, password_hash TEXT,
    email_verified_at INTEGER, is_admin INTEGER NOT NULL, created_at INTEGER NOT NULL);
CREATE TABLE sessions (id TEXT PRIMARY KEY,
    account_id TEXT NOT NULL REFERENCES accounts(id) ON DELETE CASCADE);
CREATE TABLE refresh_tokens (hash TEXT PRIMARY KEY,
    session_id TEXT NOT NULL REFERENCES sessions(id) ON DELETE CASCADE,
    expires_at INTEGER NOT NULL, used INTEGER NOT NULL DEFAULT 0);
CREATE INDEX refresh_tokens_by_session ON refresh_tokens(session_id);
INSERT INTO accounts VALUES ('account', 'ann@example.org', NULL, NULL, 0, 1700000000);
INSERT INTO sessions VALUES ('session', 'account');
INSERT INTO refresh_tokens VALUES
    ('fc2694ac13c545fd99df64fffcabc4a1f82053ab12f1cd2fe8404b62ff043215', 'session', 1900000000, 1),
    ('ae63075a5bd5211e6fac3dcb9c4ac826f8c247f93e11480a485845b43cae05bb', 'session', 1900000000, 0);
)");
    for (int start = 0; start < 2; ++start) {
        Database database(file);
        SessionStore sessions(database, time.clock());
        EXPECT_TRUE(sessions.isAlive("session"));
        EXPECT_EQ(sessions.count("account"), 1);
    }
    Database database(file);
    SessionStore sessions(database, time.clock());
    const auto next = sessions.rotate("newest");
    ASSERT_TRUE(next);
    EXPECT_EQ(next->id, "session");
    EXPECT_FALSE(sessions.rotate("used"));
    EXPECT_FALSE(sessions.isAlive("session"));
}

TEST_F(DatabaseTest, FileOfALaterVersion_IsLeftAlone) {
    { const Database database(file); }
    executeDirectly("PRAGMA user_version = 1000");
    EXPECT_THROW(Database{file}, std::runtime_error);
}

TEST_F(DatabaseTest, WorkThatFails_LeavesNoTrace) {
    Database database(file);
    EXPECT_THROW(database.transaction([&] {
        database.prepare("INSERT INTO sessions (id, account_id) VALUES ('s', 'nobody')").run();
        throw std::runtime_error("no");
    }),
                 std::runtime_error);
    EXPECT_FALSE(SessionStore(database, time.clock()).isAlive("s"));
}

} // namespace
} // namespace velmora::server
