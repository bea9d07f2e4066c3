#include "core/app_settings.h"
#include "support/wait.h"

#include <QFile>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using velmora::test::waitUntil;

namespace {

class AppSettingsTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("d.json"));
    UserDefaults defaults{path};
    AppSettings settings{defaults};
};

} // namespace

TEST_F(AppSettingsTest, FreshInstallation_EveryPropertyGivesItsDefaultAndNothingIsStored) {
    const std::vector<std::pair<const char*, QVariant>> expected{
        {"minDuration", 0.4},
        {"mode", QStringLiteral("push-to-talk")},
        {"hotkey", QStringLiteral("fn")},
        {"hotkeyCustomMask", qint64{0}},
        {"hotkeyCustomKeyCode", qint64{-1}},
        {"hotkeyCustomLabel", QString()},
        {"fnStandIn", QStringLiteral("rctrl")},
        {"micUniqueID", QString()},
        {"launchAtLogin", false},
        {"showHUD", true},
        {"hudSize", QStringLiteral("small")},
        {"hudStyle", QStringLiteral("bars")},
        {"hudPosition", QStringLiteral("bottom")},
        {"hudMinimal", true},
        {"readySound", QStringLiteral("Тихий")},
        {"hasOnboarded", false},
        {"themeColor", QStringLiteral("lime")},
        {"useStreamingDictation", false},
        {"meetingConsentAccepted", false},
        {"meetingConsentAcceptedAtTs", 0.0},
        {"meetingAudioRetentionDays", qint64{7}},
        {"pendingMeetingStart", false},
        {"callDetectionEnabled", true},
        {"callDetectionMutedAppsRaw", QString()},
    };
    for (const auto& [name, value] : expected)
        EXPECT_EQ(settings.property(name), value) << name;
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(AppSettingsTest, EveryProperty_StoresUnderItsOwnNameAndIsSeenByAnother) {
    const QMetaObject& type = AppSettings::staticMetaObject;
    AppSettings other(defaults);
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        QVariant value = property.read(&settings);
        switch (value.typeId()) {
        case QMetaType::Bool:
            value = !value.toBool();
            break;
        case QMetaType::QString:
            value = QStringLiteral("что-то");
            break;
        case QMetaType::Double:
            value = 1.25;
            break;
        default:
            value = qint64{42};
        }
        ASSERT_TRUE(property.write(&settings, value)) << property.name();
        EXPECT_TRUE(defaults.contains(QString::fromLatin1(property.name()))) << property.name();
        EXPECT_EQ(property.read(&other), value) << property.name();
    }
}

TEST_F(AppSettingsTest, Change_OfOneKey_NotifiesThatPropertyAlone) {
    QSignalSpy mode(&settings, &AppSettings::modeChanged);
    QSignalSpy hotkey(&settings, &AppSettings::hotkeyChanged);
    UserDefaults elsewhere(path);
    elsewhere.set(QStringLiteral("mode"), QStringLiteral("toggle"));
    ASSERT_TRUE(waitUntil([&] { return !mode.isEmpty(); }));
    EXPECT_EQ(settings.mode(), QStringLiteral("toggle"));
    EXPECT_EQ(mode.count(), 1);
    EXPECT_EQ(hotkey.count(), 0);
}

TEST_F(AppSettingsTest, UnknownString_IsStoredAsItIs) {
    settings.setHudSize(QStringLiteral("gigantic"));
    EXPECT_EQ(settings.hudSize(), QStringLiteral("gigantic"));
}

TEST_F(AppSettingsTest, MutedApps_StrayBlanksAndEmptyParts_GiveExactlyTheNames) {
    settings.setCallDetectionMutedAppsRaw(QStringLiteral("  Zoom ,, Skype,  "));
    EXPECT_EQ(settings.callDetectionMutedApps(),
              (QSet<QString>{QStringLiteral("Zoom"), QStringLiteral("Skype")}));
}

TEST_F(AppSettingsTest, MuteCallDetection_StoresSortedAndOnlyOnce) {
    settings.muteCallDetection(QStringLiteral("Zoom"));
    settings.muteCallDetection(QStringLiteral("Discord"));
    settings.muteCallDetection(QStringLiteral("Zoom"));
    EXPECT_EQ(settings.callDetectionMutedAppsRaw(), QStringLiteral("Discord,Zoom"));
}

TEST_F(AppSettingsTest, MutedNameWithAComma_IsSplitOnTheNextReading) {
    settings.muteCallDetection(QStringLiteral("A,B"));
    EXPECT_EQ(settings.callDetectionMutedApps(), (QSet<QString>{QStringLiteral("A"), QStringLiteral("B")}));
}

TEST_F(AppSettingsTest, ConsentDate_WritingAbsent_ReadsAbsent) {
    EXPECT_EQ(settings.meetingConsentAcceptedAt(), std::nullopt);
    const Date moment(std::chrono::seconds(1'800'000'000));
    settings.setMeetingConsentAcceptedAt(moment);
    EXPECT_EQ(settings.meetingConsentAcceptedAt(), moment);
    EXPECT_EQ(settings.meetingConsentAcceptedAtTs(), 1.8e9);
    settings.setMeetingConsentAcceptedAt(std::nullopt);
    EXPECT_EQ(settings.meetingConsentAcceptedAt(), std::nullopt);
}
