#include "settings_fixture.h"

#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

class AccountHeaderModelTest : public SettingsFixture {
protected:
    AccountHeaderModel& account = *model.account();
};

} // namespace

TEST_F(AccountHeaderModelTest, Name_IsTheAddressOnceItIsKnown) {
    const QSignalSpy changes(&account, &AccountHeaderModel::changed);
    EXPECT_EQ(account.name(), QStringLiteral("Не подключён"));
    EXPECT_FALSE(account.hasPage());
    stage.signIn();
    EXPECT_EQ(account.name(), QStringLiteral("Подключён"));
    EXPECT_TRUE(account.hasPage());
    stage.signIn("anna@example.org");
    EXPECT_EQ(account.name(), QStringLiteral("anna@example.org"));
    EXPECT_EQ(changes.size(), 2);
    auth.clear(); // the session keeps its user
    EXPECT_EQ(account.name(), QStringLiteral("Не подключён"));
    EXPECT_EQ(changes.size(), 3);
}

TEST_F(AccountHeaderModelTest, SignIn_OpensThePageWithAStateThatIsAccepted) {
    account.signIn();
    ASSERT_EQ(workspace.opened.size(), 1);
    const QString address = workspace.opened.front().toString();
    const QString start = QStringLiteral("https://site.test/auth?source=app&state=");
    ASSERT_TRUE(address.startsWith(start)) << address.toStdString();
    EXPECT_TRUE(auth.consumePendingAuthState(address.mid(start.size())));
}

TEST_F(AccountHeaderModelTest, NoBrowser_IsSaidUntilOneOpens) {
    workspace.opens = false;
    account.signIn();
    EXPECT_EQ(account.name(), QStringLiteral("Не удалось открыть браузер."));
    workspace.opens = true;
    account.signIn();
    EXPECT_EQ(account.name(), QStringLiteral("Не подключён"));
}

TEST_F(AccountHeaderModelTest, Page_IsTheAccountOfTheSite) {
    account.openPage();
    EXPECT_THAT(workspace.opened, ElementsAre(QUrl(QStringLiteral("https://site.test/account"))));
}

TEST_F(AccountHeaderModelTest, UserMissing_IsReadWhenTheViewComesUp) {
    account.appeared();
    EXPECT_EQ(stage.transport.count(), 0U); // nobody is signed in
    stage.signIn();
    account.appeared();
    model.ai()->setSeen(true); // needs the same
    ASSERT_EQ(stage.transport.count(), 1U);
    EXPECT_EQ(stage.transport.last().request.url.path(), QStringLiteral("/v1/auth/me"));
    stage.transport.last().reply(200, SettingsStage::account("anna@example.org"));
    account.appeared();
    EXPECT_EQ(stage.transport.count(), 1U);
}
