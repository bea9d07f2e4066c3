#include "accounts/account_store.h"
#include "accounts/database.h"
#include "accounts/password_hasher.h"
#include "accounts/sign_in_service.h"
#include "test_clock.h"
#include "test_folder.h"

#include <gmock/gmock.h>
#include <time.h>

#include <future>
#include <thread>

namespace velmora::server {
namespace {

using namespace std::chrono_literals;

const std::string email = "ann@example.org";
const std::string password = "correct horse";
/// Too long for any account, so it is refused without the cost of a hash.
const std::string hopeless(257, 'x');
const std::string home = "192.0.2.7";
const std::string elsewhere = "203.0.113.9";

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
        return service.createAccount(address, secret, home);
    }
    Account signIn(const std::string& address, const std::string& secret) {
        return service.signIn(address, secret, home);
    }

    TestFolder folder;
    TestClock time;
    Database database{folder.path() / "db"};
    AccountStore accounts{database, "ru", time.clock()};
    PasswordHasher hasher;
    std::chrono::milliseconds waited{};
    SignInService service{accounts, hasher, time.steady(), [this](std::chrono::milliseconds wait) {
                              time.now += wait;
                              waited += wait;
                          }};
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

TEST_F(SignInServiceTest, Email_IsOfABoundedLength) {
    const auto address = [](std::size_t name, std::size_t host) {
        return std::string(name, 'n') + '@' + std::string(host, 'h');
    };
    EXPECT_NO_THROW(create(address(64, 190), password));
    expectFailure(400, "адрес почты", [&] { create(address(65, 190), password); });
    expectFailure(400, "адрес почты", [&] { create(address(64, 191), password); });
    expectFailure(400, "адрес почты", [&] { signIn(address(10'000, 10), hopeless); });
}

TEST_F(SignInServiceTest, LocalAddresses_CannotBeTakenByForm) {
    expectFailure(409, "уже есть", [&] { create("root@localhost", password); });
}

TEST_F(SignInServiceTest, ManyWrongGuesses_SlowDown_AndTheRightOneStillGetsIn) {
    create(email, password);
    for (int i = 0; i < 5; ++i) {
        expectFailure(401, "Неверная", [&] { signIn(email, hopeless); });
    }
    EXPECT_EQ(waited, 0s);
    for (int i = 0; i < 20; ++i) {
        expectFailure(401, "Неверная", [&] { signIn(email, hopeless); });
    }
    EXPECT_EQ(waited, 1s + 2s + 4s + 8s + 16 * 16s);
    waited = {};
    EXPECT_NO_THROW(signIn(email, password));
    EXPECT_EQ(waited, 16s);
}

TEST_F(SignInServiceTest, StrangersGuesses_DoNotTouchTheOwner) {
    create(email, password);
    for (int i = 0; i < 50; ++i) {
        expectFailure(401, "Неверная",
                      [&] { static_cast<void>(service.signIn(email, hopeless, elsewhere)); });
    }
    waited = {};
    EXPECT_NO_THROW(signIn(email, password));
    EXPECT_EQ(waited, 0s);
}

TEST_F(SignInServiceTest, GuessesAtOnce_GetNoFasterBySheerNumber) {
    create(email, password);
    SignInService impatient(accounts, hasher, time.steady(), [](auto) {});
    int refused = 0;
    testing::internal::CaptureStderr();
    for (int i = 0; i < 40; ++i) {
        try {
            static_cast<void>(impatient.signIn(email, hopeless, elsewhere));
        } catch (const SignInFailure& failure) {
            refused += failure.status() == 429 ? 1 : 0;
            EXPECT_EQ(failure.retryAfter() > 0s, failure.status() == 429);
        }
    }
    // Nine places are free within the twenty seconds that anybody is told to wait: at 0, 0, 0, 0, 0, 1, 3,
    // 7, 15.
    EXPECT_EQ(refused, 40 - 9);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "velmora-server: sign-in refused, too many attempts from 203.0.113.9\n");
}

TEST_F(SignInServiceTest, OnePasswordForManyAccounts_IsSlowedDownByTheAddress) {
    for (int i = 0; i < 60; ++i) {
        expectFailure(401, "Неверная",
                      [&] { signIn("user" + std::to_string(i) + "@example.org", hopeless); });
    }
    EXPECT_EQ(waited, 0s);
    for (int i = 0; i < 10; ++i) {
        expectFailure(401, "Неверная",
                      [&] { signIn("other" + std::to_string(i) + "@example.org", hopeless); });
    }
    EXPECT_GE(waited, 90s);
    waited = {};
    static_cast<void>(service.createAccount(email, password, elsewhere));
    EXPECT_EQ(waited, 0s);
}

TEST_F(SignInServiceTest, NewAccounts_CountAsAttemptsOfTheAddress) {
    for (int i = 0; i < 61; ++i) {
        expectFailure(409, "уже есть", [&] { create("ann@localhost", password); });
    }
    EXPECT_EQ(waited, 1s);
}

TEST_F(SignInServiceTest, RightPasswords_AreNotHeldAgainstTheAddress) {
    create(email, password);
    for (int i = 0; i < 50; ++i) {
        expectFailure(401, "Неверная",
                      [&] { signIn("user" + std::to_string(i) + "@example.org", hopeless); });
    }
    for (int i = 0; i < 12; ++i) {
        static_cast<void>(signIn(email, password));
    }
    EXPECT_EQ(waited, 0s);
}

TEST_F(SignInServiceTest, OnlySoManyWaitAtATime) {
    create(email, password);
    std::atomic<int> waiting = 0;
    std::promise<void> goOn;
    const auto over = goOn.get_future().share();
    SignInService slow(accounts, hasher, time.steady(), [&](auto) {
        ++waiting;
        over.wait();
    });
    std::vector<std::future<int>> attempts;
    for (int stranger = 0; stranger < 17; ++stranger) {
        const auto from = "198.51.100." + std::to_string(stranger);
        for (int i = 0; i < 5; ++i) {
            expectFailure(401, "Неверная", [&] { static_cast<void>(slow.signIn(email, hopeless, from)); });
        }
        if (stranger < 16) {
            attempts.push_back(std::async(std::launch::async, [&slow, from] {
                try {
                    static_cast<void>(slow.signIn(email, hopeless, from));
                    return 200;
                } catch (const SignInFailure& failure) {
                    return failure.status();
                }
            }));
        }
    }
    const auto patience = std::chrono::steady_clock::now() + 30s;
    while (waiting < 16 && std::chrono::steady_clock::now() < patience) {
        std::this_thread::yield();
    }
    ASSERT_EQ(waiting, 16);
    expectFailure(429, "Слишком много попыток",
                  [&] { static_cast<void>(slow.signIn(email, hopeless, "198.51.100.16")); });
    EXPECT_NO_THROW(static_cast<void>(slow.signIn(email, password, home))) << "who need not wait gets in";
    goOn.set_value();
    for (auto& attempt : attempts) {
        EXPECT_EQ(attempt.get(), 401);
    }
}

/// The processor time of this thread, which other programs don't add to.
std::chrono::nanoseconds effortOf(const std::function<void()>& work) {
    const auto now = [] {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    };
    const auto before = now();
    work();
    return now() - before;
}

TEST_F(SignInServiceTest, UnknownEmails_CostAsMuchAsKnownOnes) {
    create(email, password);
    static_cast<void>(service.signInLocally({.email = "ann@localhost", .name = "Ann"}));
    const auto effortFor = [&](const std::string& address) {
        return effortOf([&] { expectFailure(401, "Неверная", [&] { signIn(address, "wrong password"); }); });
    };
    const auto known = effortFor(email);
    EXPECT_GT(effortFor("bob@example.org"), known / 3);
    EXPECT_GT(effortFor("ann@localhost"), known / 3) << "an account without a password";
}

TEST_F(SignInServiceTest, RightPassword_ForgetsTheWrongOnes) {
    create(email, password);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 4; ++i) {
            expectFailure(401, "Неверная", [&] { signIn(email, "wrong password"); });
        }
        signIn(email, password);
    }
    EXPECT_EQ(waited, 0s);
}

TEST_F(SignInServiceTest, NewPassword_NeedsThePresentOne_AndCountsFromThenOn) {
    const auto account = create(email, password);
    expectFailure(401, "Текущий пароль",
                  [&] { service.changePassword(account, "a guess", "battery staple", home); });
    expectFailure(400, "слишком короткий", [&] { service.changePassword(account, password, "brief", home); });
    EXPECT_EQ(signIn(email, password), account);
    service.changePassword(account, password, "battery staple", home);
    EXPECT_EQ(signIn(email, "battery staple"), account);
    expectFailure(401, "Неверная", [&] { signIn(email, password); });
}

TEST_F(SignInServiceTest, GuessingThePresentPassword_IsSlowedDown) {
    const auto account = create(email, password);
    for (int i = 0; i < 7; ++i) {
        expectFailure(401, "Текущий",
                      [&] { service.changePassword(account, "a guess", "battery staple", home); });
    }
    EXPECT_EQ(waited, 1s + 2s);
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
