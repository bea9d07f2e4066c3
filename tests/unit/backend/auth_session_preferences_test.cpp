#include "auth_fixture.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

const QByteArray serverRecord =
    R"({"transcribeLanguage":"fr","cleanupEnabled":true,"devModeEnabled":true,"meetingStorageMode":"cloud"})";
const BackendPreferences fromServer{QStringLiteral("fr"), true, true, QStringLiteral("cloud")};

struct AuthSessionPreferences : AuthFixture {
    static PreferencesPatch language(const char* code) {
        return {.transcribeLanguage = QString::fromLatin1(code)};
    }
    void patchLanguage(const char* code) { session.patchPreferences(language(code)); }

    /// What the session shows; fails where it shows nothing.
    [[nodiscard]] BackendPreferences shown() const {
        EXPECT_TRUE(session.preferences());
        return session.preferences().value_or(BackendPreferences());
    }
    [[nodiscard]] QJsonObject lastBody() {
        return QJsonDocument::fromJson(transport.last().request.body).object();
    }
    void loadMe() {
        const Outcome<> outcome(session.refreshMe());
        transport.last().reply(200, R"({"user":{"id":"u1","email":"a@b.c","isAdmin":false,)"
                                    R"("createdAt":"2026-03-01T10:20:30.123Z"},"preferences":)" +
                                        serverRecord + "}");
        ASSERT_EQ(session.preferences(), fromServer);
    }
};

QJsonObject languageJson(const char* code) {
    return {{QStringLiteral("transcribeLanguage"), QString::fromLatin1(code)}};
}

} // namespace

TEST_F(AuthSessionPreferences, Patch_ShowsAtOnceAndSendsAfterTheHalfSecond) {
    loadMe();
    const QSignalSpy changes(&session, &AuthSession::preferencesChanged);
    patchLanguage("en");
    EXPECT_EQ(shown(), (BackendPreferences{QStringLiteral("en"), true, true, QStringLiteral("cloud")}));
    EXPECT_EQ(changes.size(), 1);
    loop.advance(499ms);
    EXPECT_EQ(transport.count(), 1U);
    loop.advance(1ms);
    ASSERT_EQ(transport.count(), 2U);
    const HttpRequest& request = transport.last().request;
    EXPECT_EQ(request.method, "PATCH");
    EXPECT_EQ(request.url.toEncoded(), "https://api.example.org/v1/me/preferences");
    EXPECT_EQ(request.headers.value("Content-Type"), "application/json");
    EXPECT_EQ(request.headers.value("Authorization"), "Bearer access-1");
    EXPECT_EQ(request.body, R"({"transcribeLanguage":"en"})");
}

TEST_F(AuthSessionPreferences, PatchWithoutLoadedPreferences_ShowsTheDefaultsWithItApplied) {
    session.patchPreferences({.cleanupEnabled = false});
    EXPECT_EQ(shown(), (BackendPreferences{QStringLiteral("ru"), false, false, std::nullopt}));
}

TEST_F(AuthSessionPreferences, ThreeLanguagesWithinThePause_SendOneRequestWithTheLast) {
    for (const char* code : {"en", "de", "fr"}) {
        patchLanguage(code);
        loop.advance(200ms);
    }
    EXPECT_EQ(transport.count(), 0U);
    loop.advance(10s);
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_EQ(lastBody(), languageJson("fr"));
    EXPECT_EQ(shown().transcribeLanguage, QStringLiteral("fr"));
}

TEST_F(AuthSessionPreferences, LanguageAndCleanupWithinThePause_SendOneRequestWithBoth) {
    patchLanguage("en");
    loop.advance(100ms);
    session.patchPreferences({.cleanupEnabled = false});
    loop.advance(500ms);
    ASSERT_EQ(transport.count(), 1U);
    QJsonObject both = languageJson("en");
    both.insert(QStringLiteral("cleanupEnabled"), false);
    EXPECT_EQ(lastBody(), both);
}

TEST_F(AuthSessionPreferences, SteadyChanges_PostponeTheSendAsLongAsTheyLast) {
    for (int i = 0; i < 20; ++i) {
        session.patchPreferences({.devModeEnabled = i % 2 == 0});
        loop.advance(499ms);
    }
    EXPECT_EQ(transport.count(), 0U);
    loop.advance(1ms);
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(AuthSessionPreferences, TwoPatchesWithAPauseBetween_SendEachItsOwnField) {
    patchLanguage("en");
    loop.advance(500ms);
    transport.last().reply(200, serverRecord);
    session.patchPreferences({.cleanupEnabled = false});
    loop.advance(500ms);
    ASSERT_EQ(transport.count(), 2U);
    EXPECT_EQ(transport.last().request.body, R"({"cleanupEnabled":false})");
}

TEST_F(AuthSessionPreferences, Reply_ReplacesTheOptimisticCopy) {
    patchLanguage("en");
    loop.advance(500ms);
    transport.last().reply(200, serverRecord);
    EXPECT_EQ(shown(), fromServer);
}

TEST_F(AuthSessionPreferences, ChangeWhileARequestIsInFlight_GoesInARequestOfItsOwn) {
    patchLanguage("en");
    loop.advance(500ms);
    session.patchPreferences({.cleanupEnabled = false});
    transport.last().reply(200, serverRecord);
    loop.advance(500ms);
    ASSERT_EQ(transport.count(), 2U);
    EXPECT_EQ(transport.last().request.body, R"({"cleanupEnabled":false})");
}

TEST_F(AuthSessionPreferences, TwoRequestsInFlight_TheReplyThatComesLastDecides) {
    patchLanguage("en");
    loop.advance(500ms);
    patchLanguage("fr");
    loop.advance(500ms);
    ASSERT_EQ(transport.count(), 2U);
    transport.at(1).reply(200, serverRecord);
    transport.at(0).reply(200, R"({"transcribeLanguage":"en","cleanupEnabled":true,"devModeEnabled":false})");
    EXPECT_EQ(shown(), (BackendPreferences{QStringLiteral("en"), true, false, std::nullopt}));
}

TEST_F(AuthSessionPreferences, FailedSend_KeepsTheOptimisticValueUntilTheNextRefresh) {
    patchLanguage("en");
    loop.advance(500ms);
    transport.last().fail(QStringLiteral("no route"));
    loop.advance(1min);
    EXPECT_EQ(transport.count(), 1U); // and isn't tried again
    EXPECT_EQ(shown().transcribeLanguage, QStringLiteral("en"));
    loadMe();
    EXPECT_EQ(shown(), fromServer);
}

TEST_F(AuthSessionPreferences, FailedSend_IsNotPutBackIntoTheNextPatch) {
    patchLanguage("en");
    loop.advance(500ms);
    transport.last().reply(500, "{}");
    session.patchPreferences({.cleanupEnabled = false});
    loop.advance(500ms);
    EXPECT_EQ(transport.last().request.body, R"({"cleanupEnabled":false})");
}

TEST_F(AuthSessionPreferences, ReplyThatIsNoRecord_KeepsTheOptimisticValue) {
    patchLanguage("en");
    loop.advance(500ms);
    transport.last().reply(200, R"({"transcribeLanguage":"fr"})");
    EXPECT_EQ(shown(), (BackendPreferences{QStringLiteral("en"), true, false, std::nullopt}));
}

TEST_F(AuthSessionPreferences, RefreshDuringThePause_OverwritesUntilThePatchsReply) {
    patchLanguage("en");
    loadMe();
    EXPECT_EQ(shown().transcribeLanguage, QStringLiteral("fr"));
    loop.advance(500ms);
    EXPECT_EQ(lastBody(), languageJson("en"));
    transport.last().reply(200, R"({"transcribeLanguage":"en","cleanupEnabled":true,"devModeEnabled":true})");
    EXPECT_EQ(shown(), (BackendPreferences{QStringLiteral("en"), true, true, std::nullopt}));
}

TEST_F(AuthSessionPreferences, PatchWhileSignedOut_ShowsAndIsDroppedAtTheEndOfThePause) {
    store.clear();
    patchLanguage("en");
    EXPECT_EQ(shown().transcribeLanguage, QStringLiteral("en"));
    loop.advance(500ms);
    EXPECT_EQ(transport.count(), 0U);
    EXPECT_EQ(shown().transcribeLanguage, QStringLiteral("en"));
    store.save(QStringLiteral("access-9"), QStringLiteral("refresh-9"));
    session.patchPreferences({.cleanupEnabled = false});
    loop.advance(500ms);
    EXPECT_EQ(transport.last().request.body, R"({"cleanupEnabled":false})");
}

TEST_F(AuthSessionPreferences, LogoutWithinThePause_SendsNoPatchAndForgetsIt) {
    patchLanguage("en");
    const Outcome<> logout(session.logout());
    transport.last().reply(204);
    loop.advance(1min);
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_EQ(transport.last().request.url.path(), QStringLiteral("/v1/auth/logout"));
    EXPECT_EQ(session.preferences(), std::nullopt);
    store.save(QStringLiteral("access-9"), QStringLiteral("refresh-9"));
    session.patchPreferences({.cleanupEnabled = false});
    loop.advance(500ms);
    EXPECT_EQ(transport.last().request.body, R"({"cleanupEnabled":false})");
}

TEST_F(AuthSessionPreferences, LogoutWithinThePause_PauseEndsBeforeTheServerAnswers_SendsNoPatch) {
    patchLanguage("en");
    const Outcome<> logout(session.logout());
    loop.advance(1min); // signed in still
    ASSERT_EQ(transport.count(), 1U);
    transport.last().reply(204);
    EXPECT_TRUE(logout.succeeded());
}

TEST_F(AuthSessionPreferences, LogoutWithinThePause_SignedInAgainBeforeItsEnd_SendsNoPatch) {
    patchLanguage("en");
    const Outcome<> logout(session.logout());
    transport.last().reply(204);
    store.save(QStringLiteral("access-9"), QStringLiteral("refresh-9"));
    loop.advance(1min);
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(AuthSessionPreferences, ExpiredToken_IsRotatedAndThePatchSentAgain) {
    patchLanguage("en");
    loop.advance(500ms);
    transport.last().reply(401);
    replyWithNewTokens();
    ASSERT_EQ(transport.count(), 3U);
    EXPECT_EQ(transport.last().request.headers.value("Authorization"), "Bearer access-2");
    EXPECT_EQ(lastBody(), languageJson("en"));
    transport.last().reply(200, serverRecord);
    EXPECT_EQ(shown(), fromServer);
}

TEST_F(AuthSessionPreferences, SessionGoneWithinThePause_SendsNothing) {
    patchLanguage("en");
    owned.reset();
    loop.advance(1s);
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(AuthSessionPreferences, SessionGoneWhileTheRequestIsInFlight_AbortsIt) {
    patchLanguage("en");
    loop.advance(500ms);
    owned.reset();
    EXPECT_TRUE(transport.last().isAborted());
}

TEST_F(AuthSessionPreferences, LogoutBeforeTheReplies_LeavesNothingOfTheAccount) {
    loadMe();
    session.patchPreferences(language("en"));
    loop.advance(500ms);
    FakeExchange& patch = transport.last();
    const Outcome<> me(session.refreshMe());
    FakeExchange& user = transport.last();
    const Outcome<> out(session.logout());
    transport.last().reply(204);
    patch.reply(200, serverRecord);
    user.reply(200, R"({"user":{"id":"u1","email":"anna@example.org","isAdmin":false,)"
                    R"("createdAt":"2026-01-01T00:00:00Z"},"preferences":)" +
                        QByteArray(serverRecord) + "}");
    EXPECT_TRUE(out.succeeded());
    EXPECT_FALSE(session.preferences());
    EXPECT_FALSE(session.user());
}

TEST_F(AuthSessionPreferences, Update_SendsAtOnceAndGivesTheServersRecord) {
    const Outcome<BackendPreferences> outcome(session.updatePreferences(language("en")));
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_FALSE(session.preferences()); // nothing is shown ahead here
    EXPECT_EQ(lastBody(), languageJson("en"));
    transport.last().reply(200, serverRecord);
    EXPECT_EQ(outcome.value(), fromServer);
    EXPECT_EQ(shown(), fromServer);
}

TEST_F(AuthSessionPreferences, Update_EmptyPatch_SendsAnEmptyObject) {
    const Outcome<BackendPreferences> outcome(session.updatePreferences({}));
    EXPECT_EQ(transport.last().request.body, "{}");
    transport.last().reply(200, serverRecord);
    EXPECT_TRUE(outcome.succeeded());
}

TEST_F(AuthSessionPreferences, Update_FailureReachesTheCallerAndChangesNothing) {
    loadMe();
    const Outcome<BackendPreferences> refused(session.updatePreferences(language("en")));
    transport.last().reply(422, R"({"error":{"code":"bad_language","message":"нет"}})");
    EXPECT_TRUE(refused.failureAs<BackendError>());
    const Outcome<BackendPreferences> cut(session.updatePreferences(language("en")));
    transport.last().fail(QStringLiteral("no route"));
    EXPECT_EQ(cut.failure(), QStringLiteral("no route"));
    EXPECT_EQ(shown(), fromServer);
}

TEST_F(AuthSessionPreferences, Update_SignedOut_FailsWithNotLoggedIn) {
    store.clear();
    const Outcome<BackendPreferences> outcome(session.updatePreferences(language("en")));
    ASSERT_TRUE(outcome.failureAs<BackendError>());
    EXPECT_EQ(outcome.failureAs<BackendError>()->code, QStringLiteral("not_logged_in"));
    EXPECT_EQ(transport.count(), 0U);
}
