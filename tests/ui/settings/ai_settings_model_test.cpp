#include "settings_fixture.h"

#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class AISettingsModelTest : public SettingsFixture {
protected:
    using Page = AISettingsModel::Page;

    AISettingsModel& ai = *model.ai();
};

struct Stored {
    const char* value;
    const char* label;
};

} // namespace

TEST_F(AISettingsModelTest, Page_FollowsTheAccount) {
    const QSignalSpy changes(&ai, &AISettingsModel::changed);
    EXPECT_EQ(ai.page(), Page::SignedOut);
    stage.signIn();
    EXPECT_EQ(ai.page(), Page::Loading);
    EXPECT_EQ(changes.size(), 1);
    stage.signIn("anna@example.org");
    EXPECT_EQ(ai.page(), Page::Loaded);
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(AISettingsModelTest, SessionExpired_IsSignedOutThoughPreferencesAreStillThere) {
    stage.signIn("anna@example.org");
    auth.clear();
    ASSERT_TRUE(stage.session.preferences());
    EXPECT_EQ(ai.page(), Page::SignedOut);
}

TEST_F(AISettingsModelTest, PreferencesMissing_AreReadWhenTheViewComesUp) {
    ai.setSeen(true);
    EXPECT_EQ(stage.transport.count(), 0U); // nobody is signed in
    stage.signIn();
    ai.setSeen(true);
    ASSERT_EQ(stage.transport.count(), 1U);
    EXPECT_EQ(stage.transport.last().request.url.path(), QStringLiteral("/v1/auth/me"));
    ai.setSeen(true);
    EXPECT_EQ(stage.transport.count(), 1U); // under way
    stage.transport.last().reply(200, SettingsStage::account("anna@example.org"));
    ai.setSeen(true);
    EXPECT_EQ(stage.transport.count(), 1U);
}

TEST_F(AISettingsModelTest, ReadFailed_IsTriedAgainEveryFiveSecondsWhileTheViewIsSeen) {
    stage.signIn();
    ai.setSeen(true);
    for (std::size_t reads = 1; reads < 4; ++reads) {
        ASSERT_EQ(stage.transport.count(), reads);
        stage.transport.last().fail(QStringLiteral("offline"));
        EXPECT_EQ(ai.page(), Page::Loading);
        loop.advance(4999ms);
        EXPECT_EQ(stage.transport.count(), reads);
        loop.advance(1ms);
    }
    stage.transport.last().reply(200, SettingsStage::account("anna@example.org"));
    EXPECT_EQ(ai.page(), Page::Loaded);
    loop.advance(1min);
    EXPECT_EQ(stage.transport.count(), 4U);
}

TEST_F(AISettingsModelTest, ViewNotSeenAnyMore_NothingIsRead) {
    stage.signIn();
    ai.setSeen(true);
    stage.transport.last().fail(QStringLiteral("offline"));
    ai.setSeen(false);
    loop.advance(1min);
    EXPECT_EQ(stage.transport.count(), 1U);
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(AISettingsModelTest, StoredLanguage_ShowsUnderItsLabel) {
    EXPECT_THAT(AISettingsModel::languages(),
                ElementsAre(QStringLiteral("Русский"), QStringLiteral("English"), QStringLiteral("Авто")));
    for (const Stored& c : {Stored{"ru", "Русский"}, Stored{"English", "English"}, Stored{"auto", "Авто"},
                            Stored{"english", "Русский"}, Stored{"de", "Русский"}, Stored{"", "Русский"}}) {
        stage.signIn("anna@example.org", c.value);
        EXPECT_EQ(ai.language().toStdString(), c.label) << c.value;
    }
}

TEST_F(AISettingsModelTest, ChosenLanguage_ShowsAtOnceAndIsSentAfterThePause) {
    stage.signIn("anna@example.org", "de");
    for (const Stored& c : {Stored{"English", "English"}, Stored{"auto", "Авто"}, Stored{"ru", "Русский"}}) {
        const std::size_t before = stage.transport.count();
        ai.setLanguage(QString::fromUtf8(c.label));
        EXPECT_EQ(ai.language().toStdString(), c.label);
        EXPECT_EQ(stage.transport.count(), before);
        loop.advance(500ms);
        ASSERT_EQ(stage.transport.count(), before + 1);
        EXPECT_EQ(lastBody().toStdString(), std::string(R"({"transcribeLanguage":")") + c.value + R"("})");
    }
}

TEST_F(AISettingsModelTest, Switches_SendOnlyThemselvesAndTogether) {
    stage.signIn("anna@example.org");
    EXPECT_TRUE(ai.cleanupEnabled());
    EXPECT_FALSE(ai.devModeEnabled());
    ai.setCleanupEnabled(false);
    EXPECT_FALSE(ai.cleanupEnabled());
    loop.advance(500ms);
    EXPECT_EQ(lastBody(), R"({"cleanupEnabled":false})");
    ai.setCleanupEnabled(true);
    ai.setDevModeEnabled(true);
    EXPECT_TRUE(ai.devModeEnabled());
    loop.advance(500ms);
    EXPECT_EQ(lastBody(), R"({"cleanupEnabled":true,"devModeEnabled":true})");
}
