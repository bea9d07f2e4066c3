#include "accounts/account_store.h"
#include "accounts/database.h"
#include "accounts/password_hasher.h"
#include "accounts/sign_in_service.h"
#include "test_clock.h"
#include "test_folder.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

const std::string email = "ann@example.org";
const std::string password = "correct horse";
const std::string peer = "127.0.0.1";

class SignInServiceTest : public testing::Test {
protected:
    template<typename Call>
    void expectFailure(int status, const std::string& words, Call call) {
        try {
            call();
            ADD_FAILURE() << "let in, expected: " << words;
        } catch (const SignInFailure& failure) {
            EXPECT_EQ(failure.status(), status);
            EXPECT_THAT(failure.what(), testing::HasSubstr(words));
        }
    }

    Account create(const std::string& address, const std::string& secret) {
        return service.createAccount(address, secret, peer);
    }
    Account signIn(const std::string& address, const std::string& secret) {
        return service.signIn(address, secret, peer);
    }

    TestFolder folder;
    TestClock time;
    Database database{folder.path() / "db"};
    AccountStore accounts{database, "ru", time.clock()};
    PasswordHasher hasher;
    SignInService service{accounts, hasher, time.clock()};
};

TEST_F(SignInServiceTest, Created_SignsInWithItsPassword) {
    const auto account = create(email, password);
    EXPECT_EQ(signIn(email, password), account);
    EXPECT_FALSE(account.isAdmin);
}

TEST_F(SignInServiceTest, Password_IsStoredAsArgon2Hash) {
    create(email, password);
    const auto hash = accounts.byEmail(email)->passwordHash;
    EXPECT_THAT(hash, testing::StartsWith("$argon2id$"));
    EXPECT_THAT(hash, testing::Not(testing::HasSubstr(password)));
}

TEST_F(SignInServiceTest, Email_CountsWithoutCaseAndBlanks) {
    const auto account = create("  Ann@Example.ORG ", password);
    EXPECT_EQ(account.email, email);
    EXPECT_EQ(signIn("ANN@example.org", password), account);
}

TEST_F(SignInServiceTest, WrongPasswordAndUnknownEmail_LookTheSame) {
    create(email, password);
    expectFailure(401, "Неверная почта или пароль.", [&] { signIn(email, "wrong password"); });
    expectFailure(401, "Неверная почта или пароль.", [&] { signIn("bob@example.org", password); });
}

TEST_F(SignInServiceTest, TakenEmail_IsRefused) {
    create(email, password);
    expectFailure(409, "уже есть", [&] { create(email, "another password"); });
}

TEST_F(SignInServiceTest, ShortPassword_IsRefused_CountedInCharacters) {
    expectFailure(400, "слишком короткий", [&] { create(email, "1234567"); });
    expectFailure(400, "слишком короткий", [&] { create(email, "парольк"); });
    create(email, "парольки");
}

TEST_F(SignInServiceTest, OverlongPassword_IsRefused) {
    expectFailure(400, "слишком длинный", [&] { create(email, std::string(257, 'x')); });
    expectFailure(401, "Неверная", [&] { signIn(email, std::string(100'000, 'x')); });
}

TEST_F(SignInServiceTest, OddEmails_AreRefused) {
    for (const std::string odd :
         {"", "ann", "@example.org", "ann@", "a b@example.org", "<ann>@example.org", "a@b@c"}) {
        expectFailure(400, "адрес почты", [&] { create(odd, password); });
    }
}

TEST_F(SignInServiceTest, LocalAddresses_CannotBeTakenByForm) {
    expectFailure(409, "уже есть", [&] { create("root@localhost", password); });
}

TEST_F(SignInServiceTest, ManyWrongGuesses_AreHeldBack_EvenWhenRight_UntilTimePasses) {
    create(email, password);
    for (int i = 0; i < 10; ++i) {
        expectFailure(401, "Неверная", [&] { signIn(email, "wrong password"); });
    }
    expectFailure(429, "через 15 мин", [&] { signIn(email, password); });
    time.now += std::chrono::minutes(15);
    EXPECT_NO_THROW(signIn(email, password));
}

TEST_F(SignInServiceTest, RightPassword_ForgetsTheWrongOnes) {
    create(email, password);
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 6; ++i) {
            expectFailure(401, "Неверная", [&] { signIn(email, "wrong password"); });
        }
        signIn(email, password);
    }
}

TEST_F(SignInServiceTest, NewPassword_NeedsThePresentOne_AndCountsFromThenOn) {
    const auto account = create(email, password);
    expectFailure(401, "Текущий пароль",
                  [&] { service.changePassword(account, "a guess", "battery staple", peer); });
    expectFailure(400, "слишком короткий", [&] { service.changePassword(account, password, "brief", peer); });
    EXPECT_EQ(signIn(email, password), account);
    service.changePassword(account, password, "battery staple", peer);
    EXPECT_EQ(signIn(email, "battery staple"), account);
    expectFailure(401, "Неверная", [&] { signIn(email, password); });
}

TEST_F(SignInServiceTest, GuessingThePresentPassword_IsHeldBack) {
    const auto account = create(email, password);
    for (int i = 0; i < 10; ++i) {
        expectFailure(401, "Текущий",
                      [&] { service.changePassword(account, "a guess", "battery staple", peer); });
    }
    expectFailure(429, "через 15 мин",
                  [&] { service.changePassword(account, password, "battery staple", peer); });
}

TEST_F(SignInServiceTest, LocalUser_IsMadeOnce_AsAdminWithoutPassword) {
    const LocalUser user{.email = "ann@localhost", .name = "Ann"};
    const auto account = service.signInLocally(user);
    EXPECT_TRUE(account.isAdmin);
    EXPECT_EQ(service.signInLocally(user), account);
    expectFailure(401, "Неверная", [&] { signIn("ann@localhost", ""); });
}

} // namespace
} // namespace velmora::server
