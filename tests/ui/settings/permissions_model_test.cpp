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
    FakePrivacyRights rights;
    PermissionManager perms{rights};
};

} // namespace

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
    rights.granted = {PrivacyRight::Accessibility};
    perms.refresh();
    EXPECT_THAT(granted(), ElementsAre(false, true, false));
    rights.granted = {PrivacyRight::Microphone, PrivacyRight::InputMonitoring};
    perms.refresh();
    EXPECT_THAT(granted(), ElementsAre(true, false, true));
    EXPECT_EQ(changes.size(), 4);
}

TEST_F(PermissionsModelTest, EachPermissionRow_AsksForItsRight) {
    PermissionsModel model(perms);
    for (int row = 0; row < model.rowCount(); ++row)
        model.request(row);
    EXPECT_THAT(rights.requests, ElementsAre(PrivacyRight::Microphone, PrivacyRight::Accessibility,
                                             PrivacyRight::InputMonitoring));
    // Nothing was granted: the desktop's settings are the other way.
    EXPECT_EQ(rights.openedSettings, rights.requests);
}

TEST_F(PermissionsModelTest, MicrophoneAnsweredAfterTheWindowIsGone_StillLeadsToTheSettings) {
    rights.holdAnswers = true;
    {
        PermissionsModel model(perms);
        model.request(0);
    }
    rights.release();
    EXPECT_THAT(rights.openedSettings, ElementsAre(PrivacyRight::Microphone));
}
