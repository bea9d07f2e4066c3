#include "backend/auth_store.h"
#include "foundation/info_dictionary.h"
#include "foundation/user_defaults.h"
#include "support/fake_desktop.h"
#include "support/fake_privacy_rights.h"
#include "ui/main_window/settings_sheet_model.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

class SettingsSheetModelTest : public testing::Test {
protected:
    [[nodiscard]] SettingsSheetModel modelOf(const QJsonObject& values, const QString& path = QString()) {
        return {nav, perms, auth, InfoDictionary(values), workspace, path};
    }

    AppNavigator nav;
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    FakeWorkspace workspace;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AuthStore auth{folder.path(), defaults};
};

} // namespace

TEST_F(SettingsSheetModelTest, EachTab_HasItsPageAndTitle) {
    const SettingsSheetModel model = modelOf({});
    struct Case {
        const char* tab;
        SettingsSheetModel::Page page;
        const char* title;
    };
    using Page = SettingsSheetModel::Page;
    for (const Case& c : {
             Case{"permissions", Page::Permissions, "Разрешения"},
             Case{"about", Page::About, "О программе"},
             Case{"general", Page::ToCome, "Настройки"},
             Case{"integrations", Page::ToCome, "Настройки"},
             Case{"", Page::ToCome, "Настройки"},
         }) {
        nav.setSettingsTab(QLatin1String(c.tab));
        EXPECT_EQ(model.page(), c.page) << c.tab;
        EXPECT_EQ(model.title().toStdString(), c.title);
    }
}

TEST_F(SettingsSheetModelTest, NothingKnownOfTheProgram_SaysNothing) {
    SettingsSheetModel model = modelOf({});
    EXPECT_EQ(model.version(), QString());
    EXPECT_EQ(model.site(), QString());
    model.openSite();
    EXPECT_TRUE(workspace.opened.isEmpty());
}

TEST_F(SettingsSheetModelTest, Site_IsShownAsOneReadsIt) {
    struct Case {
        const char* url;
        const char* shown;
    };
    for (const Case& c :
         {Case{"https://velmora.app/", "velmora.app"}, Case{"https://velmora.app", "velmora.app"},
          Case{"http://example.org/velmora", "example.org/velmora"}})
        EXPECT_EQ(modelOf({{QStringLiteral("VelmorLandingURL"), QLatin1String(c.url)}}).site().toStdString(),
                  c.shown);
}

TEST_F(SettingsSheetModelTest, SettingsPath_IsShortInTheHomeFolder) {
    EXPECT_EQ(modelOf({}, QDir::homePath() + QStringLiteral("/.config/Velmora/defaults.json")).settingsPath(),
              QStringLiteral("~/.config/Velmora/defaults.json"));
    EXPECT_EQ(modelOf({}, QDir::homePath() + QStringLiteral("er/defaults.json")).settingsPath(),
              QDir::homePath() + QStringLiteral("er/defaults.json"));
}

TEST_F(SettingsSheetModelTest, Permissions_FollowTheRights) {
    PermissionsModel model(perms);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    const auto granted = [&model] {
        QList<bool> result;
        for (int row = 0; row < model.rowCount(); ++row)
            result.append(model.data(model.index(row), PermissionsModel::Granted).toBool());
        return result;
    };
    EXPECT_THAT(granted(), ElementsAre(false, false, false));
    rights.granted = {PrivacyRight::Accessibility};
    perms.refresh();
    EXPECT_THAT(granted(), ElementsAre(false, true, false));
    rights.granted = {PrivacyRight::Microphone, PrivacyRight::InputMonitoring};
    perms.refresh();
    EXPECT_THAT(granted(), ElementsAre(true, false, true));
    EXPECT_EQ(changes.size(), 4);
}

TEST_F(SettingsSheetModelTest, EachPermissionRow_AsksForItsRight) {
    PermissionsModel model(perms);
    for (int row = 0; row < model.rowCount(); ++row)
        model.request(row);
    EXPECT_THAT(rights.requests, ElementsAre(PrivacyRight::Microphone, PrivacyRight::Accessibility,
                                             PrivacyRight::InputMonitoring));
    // Nothing was granted: the desktop's settings are the other way.
    EXPECT_EQ(rights.openedSettings, rights.requests);
}

TEST_F(SettingsSheetModelTest, MicrophoneAnsweredAfterTheWindowIsGone_StillLeadsToTheSettings) {
    rights.holdAnswers = true;
    {
        PermissionsModel model(perms);
        model.request(0);
    }
    rights.release();
    EXPECT_THAT(rights.openedSettings, ElementsAre(PrivacyRight::Microphone));
}

TEST_F(SettingsSheetModelTest, SignIn_OpensThePageWithAStateThatIsAccepted) {
    SettingsSheetModel model =
        modelOf({{QStringLiteral("VelmorLandingURL"), QStringLiteral("https://site.test")}});
    EXPECT_FALSE(model.signedIn());
    model.signIn();
    ASSERT_EQ(workspace.opened.size(), 1);
    const QString address = workspace.opened.front().toString();
    const QString start = QStringLiteral("https://site.test/auth?source=app&state=");
    ASSERT_TRUE(address.startsWith(start));
    EXPECT_TRUE(auth.consumePendingAuthState(address.mid(start.size())));

    const QSignalSpy changes(&model, &SettingsSheetModel::signedInChanged);
    auth.save(QStringLiteral("a"), QStringLiteral("r"));
    EXPECT_TRUE(model.signedIn());
    EXPECT_EQ(changes.size(), 1);
}
