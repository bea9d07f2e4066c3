#include "backend/auth_store.h"
#include "backend/sign_in.h"
#include "foundation/user_defaults.h"
#include "platform/workspace.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;

namespace {

class FakeWorkspace final : public Workspace {
public:
    std::optional<RunningApplication> frontmostApplication() override { return std::nullopt; }
    bool openURL(const QUrl& url) override {
        opened.push_back(url);
        return hasBrowser;
    }

    std::vector<QUrl> opened;
    bool hasBrowser = true;
};

struct SignInTest : testing::Test {
    QTemporaryDir root;
    UserDefaults defaults{root.path() + QStringLiteral("/defaults.json")};
    AuthStore store{root.path(), defaults};
    FakeWorkspace workspace;
};

} // namespace

TEST_F(SignInTest, OpenLoginURL_OpensTheLandingPageWithANewState) {
    SignIn signIn(store, workspace, QStringLiteral("https://landing.example"));
    EXPECT_TRUE(signIn.openLoginURL());
    ASSERT_EQ(workspace.opened.size(), 1U);
    const QString state = defaults.string(QStringLiteral("pendingAuthState")).value();
    EXPECT_EQ(workspace.opened[0].toEncoded(),
              QByteArray("https://landing.example/auth?source=app&state=" + state.toUtf8()));
    EXPECT_TRUE(store.consumePendingAuthState(state));
}

TEST_F(SignInTest, OpenLoginURLTwice_TheFirstStateIsNoGoodAnyMore) {
    SignIn signIn(store, workspace, QStringLiteral("https://landing.example"));
    signIn.openLoginURL();
    const QString first = defaults.string(QStringLiteral("pendingAuthState")).value();
    signIn.openLoginURL();
    EXPECT_NE(workspace.opened[0], workspace.opened[1]);
    EXPECT_FALSE(store.consumePendingAuthState(first));
}

TEST_F(SignInTest, OpenLoginURL_NoBrowser_TellsSo) {
    workspace.hasBrowser = false;
    EXPECT_FALSE(SignIn(store, workspace, QStringLiteral("https://landing.example")).openLoginURL());
}
