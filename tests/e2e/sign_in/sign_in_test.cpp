#include "e2e/session/dictation_session.h"
#include "e2e/session/sign_in_page.h"
#include "e2e/session/user_hand.h"
#include "support/desktop/browser.h"
#include "support/desktop/tray.h"

#include <gmock/gmock.h>
#include <pwd.h>
#include <unistd.h>

using namespace velmora;
using namespace velmora::test;

namespace {

QString ownEmail() {
    return QString::fromUtf8(getpwuid(getuid())->pw_name) + QStringLiteral("@localhost");
}

class SignInTest : public testing::Test {
protected:
    void SetUp() override {
        DictationSession::registerLinks();
        ASSERT_EQ(session.storedTokens(), QByteArray());
        // Who asks for the page by themselves has no need of the first run.
        ASSERT_TRUE(shows(QStringLiteral("ШАГ 1 ИЗ 5")));
        press({QStringLiteral("ctrl+w")});
        ASSERT_TRUE(hides(QStringLiteral("ШАГ 1 ИЗ 5")));
        ASSERT_EQ(DictationSession::velmora(QStringLiteral("--sign-in")), 0);
        ASSERT_TRUE(Browser::shows(QStringLiteral("Вход в Velmora")));
    }

    void TearDown() override {
        if (!HasFailure())
            return;
        screenshot().save(QStringLiteral("sign-in-failure.png"));
        std::cout << session.application().output().toStdString() << Browser::description().toStdString();
    }

    void createAccount() {
        ASSERT_TRUE(browser.type(QStringLiteral("Почта"), QStringLiteral("ann@example.org")));
        ASSERT_TRUE(
            browser.type(QStringLiteral("Пароль, не меньше 8 символов"), QStringLiteral("correct horse")));
        ASSERT_TRUE(browser.click(QStringLiteral("Создать аккаунт")));
        ASSERT_TRUE(browser.allowLink());
    }

    void expectSignedInAs(const QString& email) {
        EXPECT_TRUE(session.isSignedIn());
        EXPECT_EQ(session.account().value(QStringLiteral("email")).toString(), email);
    }

    Tray tray;
    DictationSession session{false};
    Browser browser;
};

} // namespace

TEST_F(SignInTest, LocalUserContinues_ApplicationIsSignedIn) {
    ASSERT_TRUE(browser.click(continueAsOwnUser()));
    ASSERT_TRUE(browser.allowLink());
    expectSignedInAs(ownEmail());
}

TEST_F(SignInTest, AccountCreatedInTheForm_ApplicationIsSignedIn) {
    createAccount();
    expectSignedInAs(QStringLiteral("ann@example.org"));
}

TEST_F(SignInTest, LinkDeclinedAtFirst_ButtonOfThePageOpensTheApplication) {
    ASSERT_TRUE(browser.click(continueAsOwnUser()));
    ASSERT_TRUE(browser.declineLink());
    EXPECT_EQ(session.storedTokens(), QByteArray());
    ASSERT_TRUE(browser.click(QStringLiteral("Открыть Velmora")));
    ASSERT_TRUE(browser.allowLink());
    expectSignedInAs(ownEmail());
}

TEST_F(SignInTest, PasswordChangedOnTheAccountPage_ApplicationsSessionHasEnded) {
    createAccount();
    expectSignedInAs(QStringLiteral("ann@example.org"));
    Browser::open(session.address());
    ASSERT_TRUE(Browser::shows(QStringLiteral("Аккаунт Velmora")));
    ASSERT_TRUE(browser.type(QStringLiteral("Почта"), QStringLiteral("ann@example.org")));
    ASSERT_TRUE(browser.type(QStringLiteral("Пароль"), QStringLiteral("correct horse")));
    ASSERT_TRUE(browser.click(QStringLiteral("Войти")));
    // For weak eyes, so that the page has to be scrolled.
    press(QStringList(5, QStringLiteral("ctrl+plus")));
    ASSERT_TRUE(browser.type(QStringLiteral("Текущий пароль"), QStringLiteral("correct horse")));
    ASSERT_TRUE(
        browser.type(QStringLiteral("Новый пароль, не меньше 8 символов"), QStringLiteral("battery staple")));
    ASSERT_TRUE(browser.click(QStringLiteral("Сменить пароль")));
    EXPECT_TRUE(Browser::shows(QStringLiteral("Открытых сеансов нет.")));
    EXPECT_TRUE(session.account().isEmpty());
}
