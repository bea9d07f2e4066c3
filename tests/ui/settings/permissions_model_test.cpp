#include "support/fake_privacy_rights.h"
#include "ui/settings/permissions_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

class PermissionsModelTest : public testing::Test {
protected:
    [[nodiscard]] static std::string textAt(const PermissionsModel& model, int row, int role) {
        return model.data(model.index(row), role).toString().toStdString();
    }

    FakePrivacyRights rights;
    PermissionManager perms{rights};
};

} // namespace

TEST_F(PermissionsModelTest, Rows_AreNamedAndSayWhatTheyAreFor) {
    const PermissionsModel model(perms);
    struct Case {
        const char* title;
        const char* hint;
    };
    const Case cases[] = {
        {"Микрофон", "Записать твой голос"},
        {"Input Monitoring", "Слушать удержание клавиши Fn"},
        {"Accessibility", "Вставлять текст в активное приложение"},
    };
    ASSERT_EQ(model.rowCount(), static_cast<int>(std::size(cases)));
    for (int row = 0; row < model.rowCount(); ++row) {
        EXPECT_EQ(textAt(model, row, PermissionsModel::Title), cases[row].title);
        EXPECT_EQ(textAt(model, row, PermissionsModel::Hint), cases[row].hint);
    }
}

TEST_F(PermissionsModelTest, Permissions_FollowTheRights) {
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
    EXPECT_EQ(textAt(model, 0, PermissionsModel::StateLabel), "Нет доступа");
    EXPECT_EQ(textAt(model, 0, PermissionsModel::ActionLabel), "Разрешить");
    rights.granted = {PrivacyRight::Accessibility};
    perms.refresh();
    EXPECT_THAT(granted(), ElementsAre(false, false, true));
    EXPECT_EQ(textAt(model, 2, PermissionsModel::StateLabel), "Разрешено");
    EXPECT_EQ(textAt(model, 2, PermissionsModel::ActionLabel), "Открыть");
    rights.granted = {PrivacyRight::Microphone, PrivacyRight::InputMonitoring};
    perms.refresh();
    EXPECT_THAT(granted(), ElementsAre(true, true, false));
    EXPECT_EQ(changes.size(), 4);
}

TEST_F(PermissionsModelTest, Summary_IsContentOnlyWithAllThree) {
    const PermissionsModel model(perms);
    const QString needed =
        QStringLiteral("Velmora нужны три разрешения. Без них горячая клавиша или вставка не сработают.");
    const QString content = QStringLiteral("Velmora готов к работе — все три разрешения предоставлены.");
    const QSignalSpy changes(&model, &PermissionsModel::summaryChanged);
    EXPECT_EQ(model.summary(), needed);
    for (const PrivacyRight right :
         {PrivacyRight::Microphone, PrivacyRight::InputMonitoring, PrivacyRight::Accessibility}) {
        EXPECT_EQ(model.summary(), needed);
        rights.granted.insert(right);
        perms.refresh();
    }
    EXPECT_EQ(model.summary(), content);
    EXPECT_EQ(changes.size(), 3);
}

TEST_F(PermissionsModelTest, MissingRight_IsAskedFor) {
    PermissionsModel model(perms);
    for (int row = 0; row < model.rowCount(); ++row)
        model.act(row);
    EXPECT_THAT(rights.requests, ElementsAre(PrivacyRight::Microphone, PrivacyRight::InputMonitoring,
                                             PrivacyRight::Accessibility));
    // Nothing was granted: the desktop's settings are the other way.
    EXPECT_EQ(rights.openedSettings, rights.requests);
}

TEST_F(PermissionsModelTest, GrantedRight_OpensTheDesktopsSettings) {
    PermissionsModel model(perms);
    rights.granted = {PrivacyRight::Microphone, PrivacyRight::InputMonitoring, PrivacyRight::Accessibility};
    perms.refresh();
    for (int row = 0; row < model.rowCount(); ++row)
        model.act(row);
    EXPECT_TRUE(rights.requests.empty());
    EXPECT_THAT(rights.openedSettings, ElementsAre(PrivacyRight::Microphone, PrivacyRight::InputMonitoring,
                                                   PrivacyRight::Accessibility));
}

TEST_F(PermissionsModelTest, MicrophoneAnsweredAfterTheWindowIsGone_StillLeadsToTheSettings) {
    rights.holdAnswers = true;
    {
        PermissionsModel model(perms);
        model.act(0);
    }
    rights.release();
    EXPECT_THAT(rights.openedSettings, ElementsAre(PrivacyRight::Microphone));
}
