#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "foundation/user_defaults.h"
#include "support/fake_http_transport.h"
#include "support/fake_privacy_rights.h"
#include "support/hand_loop.h"
#include "support/outcome.h"
#include "ui/kit/v_icon.h"
#include "ui/main_window/sidebar_model.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class SidebarModelTest : public testing::Test {
protected:
    /// Signs in, and lets the account be read.
    void signIn() {
        store.save(QStringLiteral("access"), QStringLiteral("refresh"));
        const Outcome<> me(session.refreshMe());
        transport.last().reply(200, R"({"user":{"id":"u1","email":"anna@example.org","isAdmin":false,)"
                                    R"("createdAt":"2026-01-01T00:00:00Z"},"preferences":)"
                                    R"({"transcribeLanguage":"ru","cleanupEnabled":true,)"
                                    R"("devModeEnabled":false}})");
        ASSERT_TRUE(me.succeeded());
    }

    QTemporaryDir folder;
    HandLoop loop;
    FakeHttpTransport transport;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AuthStore store{folder.path(), defaults};
    AuthSession session{transport, store, loop, QUrl(QStringLiteral("https://api.example.org"))};
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    SidebarModel model{perms, store, session};
};

} // namespace

TEST_F(SidebarModelTest, PermissionRow_IsContentOnlyWithAllThree) {
    constexpr std::array all{PrivacyRight::Microphone, PrivacyRight::Accessibility,
                             PrivacyRight::InputMonitoring};
    for (int granted = 0; granted < 8; ++granted) {
        rights.granted.clear();
        for (std::size_t i = 0; i < all.size(); ++i)
            if (granted & (1 << i))
                rights.granted.insert(all[i]);
        perms.refresh();
        const bool complete = granted == 7;
        EXPECT_EQ(model.allGranted(), complete) << granted;
        EXPECT_EQ(model.permissionLabel(),
                  complete ? QStringLiteral("Всё подключено") : QStringLiteral("Нужны разрешения"));
        EXPECT_EQ(model.permissionIcon(), static_cast<int>(complete ? VIcon::check : VIcon::lock));
    }
}

TEST_F(SidebarModelTest, OtherRightsThanThese_DoNotMatter) {
    rights.granted = {PrivacyRight::Microphone, PrivacyRight::Accessibility, PrivacyRight::ScreenRecording};
    perms.refresh();
    EXPECT_FALSE(model.allGranted());
}

TEST_F(SidebarModelTest, RightGranted_IsSaid) {
    const QSignalSpy changes(&model, &SidebarModel::permissionsChanged);
    rights.granted = {PrivacyRight::InputMonitoring};
    perms.refresh();
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(SidebarModelTest, SignedIn_ShowsTheAddressUntilSignedOut) {
    const QSignalSpy changes(&model, &SidebarModel::accountChanged);
    EXPECT_EQ(model.account(), QString());
    signIn();
    EXPECT_EQ(model.account(), QStringLiteral("anna@example.org"));
    EXPECT_GE(changes.size(), 1);
    store.clear();
    EXPECT_EQ(model.account(), QString()); // though the session still knows its user
    EXPECT_TRUE(session.user());
}

TEST_F(SidebarModelTest, AccountUnknown_IsReadWhenTheViewComesUp) {
    model.appeared();
    EXPECT_EQ(transport.count(), 0U); // nobody is signed in
    store.save(QStringLiteral("access"), QStringLiteral("refresh"));
    model.appeared();
    model.appeared(); // under way
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_EQ(transport.last().request.url.path(), QStringLiteral("/v1/auth/me"));
}
