#include "core/app_settings.h"
#include "e2e/session/dictation_session.h"
#include "e2e/session/sign_in_page.h"
#include "foundation/user_folders.h"
#include "support/desktop/fake_notification_service.h"
#include "support/desktop/focused_window.h"
#include "support/desktop/target_application.h"
#include "support/desktop/wait_until.h"

#include <gmock/gmock.h>

#include <csignal>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;
using testing::Ge;
using testing::HasSubstr;

namespace {

QString clipboard() {
    QProcess reader;
    reader.start(QStringLiteral("xclip"),
                 {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")});
    reader.waitForFinished();
    return QString::fromUtf8(reader.readAllStandardOutput());
}

void copy(const char* text) {
    QProcess owner;
    owner.start(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-i")});
    owner.waitForStarted();
    owner.write(text);
    owner.closeWriteChannel();
    owner.waitForFinished();
}

class DictationTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(session.isSignedIn()) << session.application().output().toStdString();
        editor = TargetApplication::mousepad();
        ASSERT_TRUE(editor->isReady());
    }

    void TearDown() override {
        if (HasFailure())
            std::cout << session.application().output().toStdString()
                      << session.backend().output().toStdString();
    }

    /// The one dictation there is is in the editor, as it is in the history, and it is what was said.
    void expectDictated() {
        const std::optional<HistoryItem> item = session.dictation(1);
        ASSERT_TRUE(item);
        EXPECT_EQ(DictationSession::dictations(), 1U);
        EXPECT_THAT(DictationSession::wordsHeard(item->cleanedText), Ge(DictationSession::wordsSpoken / 2));
        EXPECT_EQ(editor->document(item->cleanedText), item->cleanedText);
        EXPECT_EQ(item->appName, QStringLiteral("Mousepad"));
        EXPECT_EQ(item->appBundleId, QStringLiteral("org.xfce.mousepad"));
        EXPECT_TRUE(DictationSession::isQuiet());
    }
    /// The last attempt has left nothing but its message. What it might have left in the editor or the
    /// history would be there before what the next one does, which must find the program ready and works.
    void expectOnlyTheNextIsDictated() {
        EXPECT_TRUE(DictationSession::isQuiet());
        ASSERT_TRUE(DictationSession::isReady());
        session.dictateHolding();
        expectDictated();
    }

    DictationSession session;
    QTemporaryDir other; // what a second session calls its own
    std::unique_ptr<TargetApplication> editor;
};

} // namespace

TEST_F(DictationTest, Hold_WhatWasSaidIsInTheEditorAndTheHistory) {
    session.dictateHolding();
    expectDictated();
}

TEST_F(DictationTest, Hold_TheUsersClipboardComesBack) {
    copy("из буфера");
    session.dictateHolding();
    expectDictated();
    EXPECT_TRUE(waitUntil([] { return clipboard() == QStringLiteral("из буфера"); }));
}

TEST_F(DictationTest, QuitWhileTheTextIsStillUp_TextArrivesAndTheUsersClipboardIsBack) {
    copy("из буфера");
    editor->freeze();
    session.dictateHolding();
    ASSERT_TRUE(session.dictation(1));
    ::kill(static_cast<pid_t>(session.application().pid()), SIGTERM);
    editor->thaw();
    EXPECT_EQ(session.application().terminate(), 0);
    const QString said = session.dictation(1)->cleanedText;
    EXPECT_EQ(editor->document(said), said);
    EXPECT_EQ(clipboard(), QStringLiteral("из буфера"));
}

TEST_F(DictationTest, WindowTakesNoText_UserIsToldAndCanCopyIt) {
    FakeNotificationService desktop(QDBusConnection::sessionBus());
    FocusedWindow deaf(FocusedWindow::Kind::Deaf);
    ASSERT_TRUE(deaf.takeFocus());
    copy("из буфера");
    session.dictateHolding();
    ASSERT_TRUE(waitUntil([&] { return !desktop.shown.isEmpty(); }, 30s));
    EXPECT_EQ(desktop.shown[0].title, QStringLiteral("Текст не вставлен"));
    EXPECT_EQ(clipboard(), QStringLiteral("из буфера"));
    EXPECT_EQ(deaf.chords(), 1);
    const std::optional<HistoryItem> item = session.dictation(1);
    ASSERT_TRUE(item);
    ASSERT_FALSE(desktop.shown[0].actions.isEmpty());
    desktop.choose(desktop.lastId, desktop.shown[0].actions[0]);
    EXPECT_TRUE(waitUntil([&] { return clipboard() == item->cleanedText; }));
}

TEST_F(DictationTest, DoubleTap_LatchesUntilTheNextPress) {
    session.keyboard().tap(key::rightControl);
    session.keyboard().tap(key::rightControl);
    ASSERT_TRUE(DictationSession::isRecording());
    session.speak();
    session.keyboard().tap(key::rightControl);
    expectDictated();
}

TEST_F(DictationTest, LoneTap_IsTooShortAndTypesNothing) {
    // A lone tap records half a second, which could pass, and more on a busy machine.
    session.setDefaults(R"({"minDuration": 30})");
    session.keyboard().tap(key::rightControl);
    ASSERT_TRUE(session.application().says("Слишком коротко — удерживайте клавишу дольше"));
    UserDefaults defaults(defaultsPath());
    AppSettings(defaults).setMinDuration(0.4); // counts with the next dictation
    expectOnlyTheNextIsDictated();
}

TEST_F(DictationTest, ToggleVerb_StartsAndStops) {
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("--toggle")), 0);
    ASSERT_TRUE(DictationSession::isRecording());
    session.speak();
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("--toggle")), 0);
    expectDictated();
}

TEST_F(DictationTest, PressAndReleaseVerbs_WorkAsTheKeyDoes) {
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("--press")), 0);
    ASSERT_TRUE(DictationSession::isRecording());
    session.speak();
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("--release")), 0);
    expectDictated();
}

TEST_F(DictationTest, AccessTokenRefused_IsRotatedAndTheDictationArrives) {
    const QByteArray before = session.storedTokens();
    session.restartBackend(true);
    session.dictateHolding();
    expectDictated();
    EXPECT_NE(session.storedTokens(), before);
    EXPECT_TRUE(session.isSignedIn());
}

TEST_F(DictationTest, ServerReportsAnError_IsShownAndNothingIsTyped) {
    session.setPreference(R"({"transcribeLanguage":"ru"})");
    session.dictateHolding();
    ASSERT_TRUE(session.application().says("Ошибка: "));
    session.setPreference(R"({"transcribeLanguage":"en"})");
    expectOnlyTheNextIsDictated();
}

TEST_F(DictationTest, ServerGone_IsAnErrorAndTheNextDictationWorks) {
    session.stopBackend();
    session.dictateHolding();
    ASSERT_TRUE(session.application().says("Ошибка: "));
    session.restartBackend();
    expectOnlyTheNextIsDictated();
}

TEST_F(DictationTest, SecondInstance_HandsItsUrlOverAndLeaves) {
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("velmora://auth?token=a&refresh=b&state=forged")), 0);
    EXPECT_TRUE(session.application().says("velmora_auth_url_rejected: state mismatch"));
    EXPECT_TRUE(session.application().isRunning());
}

// Another session of the same user has a bus of its own and the same folder for what lives as long as a
// process.
TEST_F(DictationTest, AnotherSessionStartsMeanwhile_TheRecordingIsNotTouched) {
    session.keyboard().press(key::rightControl);
    ASSERT_TRUE(DictationSession::isRecording());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), other.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), other.filePath(QStringLiteral("data")));
    environment.remove(QStringLiteral("DISPLAY")); // it would hear the key as well
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    Program second(QStringLiteral("dbus-run-session"),
                   {QStringLiteral("--"), QStringLiteral(VELMORA_PROGRAM)}, environment);
    EXPECT_TRUE(second.says("tap failed"));
    session.speak();
    session.keyboard().release(key::rightControl);
    expectDictated();
}

TEST_F(DictationTest, CallbackUsedTwice_IsRejectedTheSecondTime) {
    const QString callback = createAccount(session.requestSignInPage(), QStringLiteral("other@example.org"),
                                           QStringLiteral("battery staple"));
    ASSERT_THAT(callback.toStdString(), HasSubstr("velmora://auth?"));
    const QByteArray before = session.storedTokens();
    EXPECT_EQ(DictationSession::velmora(callback), 0);
    EXPECT_TRUE(waitUntil([&] { return session.storedTokens() != before; }));
    EXPECT_EQ(DictationSession::velmora(callback), 0);
    EXPECT_TRUE(session.application().says("velmora_auth_url_rejected: state mismatch"));
}

TEST_F(DictationTest, KeyboardCannotBeWatched_VerbsWorkAndTheTextIsInTheHistory) {
    session.restartApplication(false);
    EXPECT_TRUE(session.application().says("Input Monitoring/Accessibility permission missing?"));
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("--press")), 0);
    ASSERT_TRUE(DictationSession::isRecording());
    session.speak();
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("--release")), 0);
    const std::optional<HistoryItem> item = session.dictation(1);
    ASSERT_TRUE(item);
    EXPECT_THAT(DictationSession::wordsHeard(item->cleanedText), Ge(DictationSession::wordsSpoken / 2));
    EXPECT_EQ(item->appName, std::nullopt);
    EXPECT_TRUE(session.application().isRunning());
}

TEST_F(DictationTest, SigTerm_EndsTheProgramCleanly) {
    EXPECT_EQ(session.application().terminate(), 0);
    EXPECT_EQ(DictationSession::velmora(QStringLiteral("--toggle")), 1);
}

TEST(SignedOutTest, Dictation_AsksToSignIn) {
    DictationSession session(false);
    session.dictateHolding();
    EXPECT_TRUE(session.application().says("Войдите в аккаунт в настройках"));
    EXPECT_TRUE(DictationSession::isQuiet());
}
