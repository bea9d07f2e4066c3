#include "core/app_settings.h"
#include "e2e/session/dictation_session.h"
#include "e2e/session/sign_in_page.h"
#include "e2e/session/tutorials.h"
#include "e2e/session/user_hand.h"
#include "foundation/user_folders.h"
#include "support/desktop/browser.h"
#include "support/desktop/tray.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

const QString goOn = QStringLiteral("Продолжить");

/// A new user with a mouse, a browser and a voice.
class FirstStartInABrowserTest : public testing::Test {
protected:
    void TearDown() override {
        if (!HasFailure())
            return;
        screenshot().save(QStringLiteral("first-start-failure.png"));
        std::cout << session.application().output().toStdString() << Browser::description().toStdString();
        for (const AccessibleObject& each : accessibleObjects(applicationName))
            std::cout << each.role.toStdString() << " \"" << each.name.toStdString() << "\"\n";
    }

    Tray tray;
    DictationSession session{false};
    Browser browser;
};

} // namespace

TEST_F(FirstStartInABrowserTest, SignsIn_DictatesTwiceAndIsNeverAskedAgain) {
    DictationSession::registerLinks();
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 1 ИЗ 5")));
    ASSERT_TRUE(click(goOn));
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 2 ИЗ 5")));
    ASSERT_TRUE(click(QStringLiteral("Войти через браузер")));
    ASSERT_TRUE(browser.click(continueAsOwnUser()));
    ASSERT_TRUE(browser.allowLink());

    // The window comes to the front by itself, and says what this session really allows.
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 3 ИЗ 5")));
    EXPECT_TRUE(session.isSignedIn());
    for (const char* right : {"Микрофон: ", "Input Monitoring: ", "Accessibility: "})
        EXPECT_TRUE(shows(QString::fromUtf8(right) + QStringLiteral("Разрешено")));
    ASSERT_TRUE(click(goOn));

    ASSERT_TRUE(dictatesInBothTutorials(session, [] { EXPECT_TRUE(click(goOn)); }));
    ASSERT_TRUE(click(goOn));
    EXPECT_TRUE(hides(QStringLiteral("ШАГ 5 ИЗ 5")));
    UserDefaults defaults(defaultsPath());
    EXPECT_TRUE(AppSettings(defaults).hasOnboarded());

    session.restartApplication();
    ASSERT_TRUE(tray.icon());
    EXPECT_EQ(QProcess::execute(QStringLiteral(VELMORA_PROGRAM), QStringList()), 0);
    EXPECT_TRUE(shows(QStringLiteral("Транскрипции"))); // and not the first run, which would come before it
}
