#include "accounts/account_store.h"
#include "accounts/database.h"
#include "accounts/statement.h"
#include "test_clock.h"
#include "test_folder.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

class AccountStoreTest : public testing::Test {
protected:
    TestFolder folder;
    TestClock time;
    Database database{folder.path() / "db"};
    AccountStore accounts{database, "ru", time.clock()};
};

TEST_F(AccountStoreTest, Created_IsFoundByIdAndEmail) {
    const auto account = accounts.create("a@example.org", "hash", false);
    ASSERT_TRUE(account);
    EXPECT_EQ(accounts.byId(account->id), account);
    const auto found = accounts.byEmail("a@example.org");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->account, *account);
    EXPECT_EQ(found->passwordHash, "hash");
    EXPECT_EQ(account->createdAt.time_since_epoch().count(), 1'800'000'000);
    EXPECT_FALSE(account->emailVerifiedAt);
}

TEST_F(AccountStoreTest, TakenEmail_IsRefused_AndTheFirstStays) {
    const auto first = accounts.create("a@example.org", "first", false);
    EXPECT_FALSE(accounts.create("a@example.org", "second", true));
    EXPECT_EQ(accounts.byEmail("a@example.org")->passwordHash, "first");
    EXPECT_EQ(accounts.byEmail("a@example.org")->account, first);
}

TEST_F(AccountStoreTest, Unknown_IsEmpty) {
    EXPECT_FALSE(accounts.byId("nobody"));
    EXPECT_FALSE(accounts.byEmail("nobody@example.org"));
}

TEST_F(AccountStoreTest, WithoutPassword_HasNoHash) {
    ASSERT_TRUE(accounts.create("a@example.org", std::nullopt, true));
    EXPECT_EQ(accounts.byEmail("a@example.org")->passwordHash, "");
}

TEST_F(AccountStoreTest, NewAccount_HasTheDefaults) {
    const auto account = accounts.create("a@example.org", "hash", false);
    EXPECT_EQ(accounts.preferences(account->id), (Preferences{.transcribeLanguage = "ru",
                                                              .cleanupEnabled = true,
                                                              .devModeEnabled = false,
                                                              .meetingStorageMode = std::nullopt}));
}

TEST_F(AccountStoreTest, Patch_ChangesWhatItNames_OfThatAccountOnly) {
    const auto one = accounts.create("a@example.org", "hash", false);
    const auto other = accounts.create("b@example.org", "hash", false);
    accounts.patchPreferences(one->id, {.transcribeLanguage = "auto",
                                        .cleanupEnabled = std::nullopt,
                                        .devModeEnabled = true,
                                        .meetingStorageMode = "BOTH"});
    const auto changed = accounts.patchPreferences(one->id, {.transcribeLanguage = std::nullopt,
                                                             .cleanupEnabled = false,
                                                             .devModeEnabled = std::nullopt,
                                                             .meetingStorageMode = std::nullopt});
    EXPECT_EQ(changed, (Preferences{.transcribeLanguage = "auto",
                                    .cleanupEnabled = false,
                                    .devModeEnabled = true,
                                    .meetingStorageMode = "BOTH"}));
    EXPECT_EQ(accounts.preferences(one->id), changed);
    EXPECT_EQ(accounts.preferences(other->id).transcribeLanguage, "ru");
}

TEST_F(AccountStoreTest, QuotesInValues_AreOnlyText) {
    const std::string email = "a'; DROP TABLE accounts; --@example.org";
    ASSERT_TRUE(accounts.create(email, "hash", false));
    EXPECT_TRUE(accounts.byEmail(email));
}

TEST_F(AccountStoreTest, ReopenedDatabase_StillHasIt) {
    const auto account = accounts.create("a@example.org", "hash", false);
    Database again(folder.path() / "db");
    AccountStore reader(again, "auto", time.clock());
    EXPECT_EQ(reader.byId(account->id), account);
    EXPECT_EQ(reader.preferences(account->id).transcribeLanguage, "ru");
}

TEST_F(AccountStoreTest, FailedTransaction_LeavesNothing) {
    const auto account = accounts.create("a@example.org", "hash", false);
    const auto work = [&] {
        database.prepare("DELETE FROM accounts").run();
        throw std::runtime_error("stop");
    };
    EXPECT_THROW(database.transaction(work), std::runtime_error);
    EXPECT_EQ(accounts.byId(account->id), account);
}

} // namespace
} // namespace velmora::server
