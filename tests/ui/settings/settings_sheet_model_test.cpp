#include "support/settings_stage.h"
#include "ui/settings/settings_sheet_model.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class SettingsSheetModelTest : public testing::Test {
protected:
    /// The settings of a program with these deployment settings.
    [[nodiscard]] SettingsSheetModel& modelOf(const QJsonObject& values) {
        m_model.reset();
        m_info.emplace(values);
        stage.emplace(loop, defaults, settings, auth, workspace, *m_info);
        return m_model.emplace(stage->neighbours);
    }

    HandLoop loop;
    FakeWorkspace workspace;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    AuthStore auth{folder.path(), defaults};
    std::optional<SettingsStage> stage;

private:
    std::optional<InfoDictionary> m_info;
    std::optional<SettingsSheetModel> m_model;
};

} // namespace

TEST_F(SettingsSheetModelTest, EachTab_HasItsPageAndTitle) {
    const SettingsSheetModel& model = modelOf({});
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
        stage->nav.setSettingsTab(QLatin1String(c.tab));
        EXPECT_EQ(model.page(), c.page) << c.tab;
        EXPECT_EQ(model.title().toStdString(), c.title);
    }
}

TEST_F(SettingsSheetModelTest, NothingKnownOfTheProgram_SaysNothing) {
    SettingsSheetModel& model = modelOf({});
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

TEST_F(SettingsSheetModelTest, SignIn_OpensThePageWithAStateThatIsAccepted) {
    SettingsSheetModel& model =
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
