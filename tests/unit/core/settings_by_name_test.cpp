#include "core/app_settings.h"
#include "core/settings_by_name.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;

namespace {

class SettingsByNameTest : public testing::Test {
protected:
    [[nodiscard]] WrittenSetting setting(const char* key, const char* value) const {
        return {QString::fromUtf8(key), QString::fromUtf8(value)};
    }
    void set(const char* key, const char* value) { byName.set({setting(key, value)}); }
    [[nodiscard]] QString get(const char* key) const { return byName.value(QString::fromUtf8(key)); }
    /// What is said against the value; empty when nothing is.
    [[nodiscard]] QString refusal(const char* key, const char* value) {
        try {
            set(key, value);
        } catch (const BadSetting& error) {
            return error.localizedDescription();
        }
        return {};
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("settings/d.json"));
    UserDefaults defaults{path};
    AppSettings settings{defaults};
    SettingsByName byName{settings, defaults};
};

} // namespace

TEST_F(SettingsByNameTest, EachType_IsStoredAsItsPropertyHasIt) {
    set("showHUD", "false");
    set("minDuration", "0.25");
    set("hotkeyCustomMask", "1048576");
    set("hotkeyCustomKeyCode", "-1");
    set("readySound", "Системный");
    EXPECT_FALSE(settings.showHUD());
    EXPECT_EQ(settings.minDuration(), 0.25);
    EXPECT_EQ(settings.hotkeyCustomMask(), 1048576);
    EXPECT_EQ(settings.hotkeyCustomKeyCode(), -1);
    EXPECT_EQ(settings.readySound(), QStringLiteral("Системный"));
    const UserDefaults stored(path);
    EXPECT_EQ(stored.boolean(QStringLiteral("showHUD")), false);
    EXPECT_EQ(stored.integer(QStringLiteral("hotkeyCustomMask")), 1048576);
}

TEST_F(SettingsByNameTest, Value_IsPrintedAsItIsSet) {
    EXPECT_EQ(get("minDuration"), QStringLiteral("0.4"));
    EXPECT_EQ(get("showHUD"), QStringLiteral("true"));
    EXPECT_EQ(get("hotkeyCustomKeyCode"), QStringLiteral("-1"));
    EXPECT_EQ(get("micUniqueID"), QString());
    set("meetingConsentAcceptedAtTs", "1772360430.123");
    EXPECT_EQ(get("meetingConsentAcceptedAtTs"), QStringLiteral("1772360430.123"));
}

TEST_F(SettingsByNameTest, TextsOfAnyKind_AreKept) {
    for (const char* text : {"a=b=c", " blanks ", "", "\"quoted\" \\ back", "⌘ P", "true", "12"}) {
        set("hotkeyCustomLabel", text);
        EXPECT_EQ(settings.hotkeyCustomLabel(), QString::fromUtf8(text));
        EXPECT_EQ(get("hotkeyCustomLabel"), QString::fromUtf8(text));
    }
}

TEST_F(SettingsByNameTest, All_ComeInOrderOfDeclarationAndCanBeFedBack) {
    set("hotkeyCustomLabel", "⌃ =");
    set("minDuration", "0.1");
    const std::vector<WrittenSetting> before = byName.all();
    ASSERT_GT(before.size(), 20U);
    EXPECT_EQ(before[0], setting("minDuration", "0.1"));
    EXPECT_EQ(before[1], setting("mode", "push-to-talk"));
    EXPECT_EQ(before[5], setting("hotkeyCustomLabel", "⌃ ="));
    EXPECT_EQ(before.back().key, QStringLiteral("callDetectionMutedAppsRaw"));

    UserDefaults otherDefaults(folder.filePath(QStringLiteral("other/d.json")));
    AppSettings other(otherDefaults);
    SettingsByName(other, otherDefaults).set(before);
    EXPECT_EQ(SettingsByName(other, otherDefaults).all(), before);
}

TEST_F(SettingsByNameTest, BadValues_AreRefusedNamingTheKeyAndTheValue) {
    EXPECT_EQ(refusal("showHUD", "yes"), QStringLiteral("\"showHUD\" is true or false, not \"yes\""));
    EXPECT_EQ(refusal("minDuration", "0,4"), QStringLiteral("\"minDuration\" is a number, not \"0,4\""));
    EXPECT_EQ(refusal("meetingAudioRetentionDays", "7.5"),
              QStringLiteral("\"meetingAudioRetentionDays\" is a whole number, not \"7.5\""));
    for (const char* bad : {"", "True", "1", " true"})
        EXPECT_NE(refusal("showHUD", bad), QString()) << bad;
    for (const char* bad : {"", "nan", "inf", "-inf", "1e999", " 1", "1 ", "1s"})
        EXPECT_NE(refusal("minDuration", bad), QString()) << bad;
    for (const char* bad : {"", "0x10", "1e3", " 1", "9223372036854775808"})
        EXPECT_NE(refusal("hotkeyCustomKeyCode", bad), QString()) << bad;
    EXPECT_NE(refusal("hotkeyCustomLabel", "two\nlines"), QString());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SettingsByNameTest, NegativeMask_WhichWouldStopTheProgram_IsRefused) {
    EXPECT_NE(refusal("hotkeyCustomMask", "-1"), QString());
    EXPECT_EQ(refusal("hotkeyCustomMask", "0"), QString());
    EXPECT_NE(refusal("hotkeyCustomKeyCode", "4294967301"), QString());
    EXPECT_NE(refusal("hotkeyCustomKeyCode", "-2"), QString());
    EXPECT_EQ(refusal("hotkeyCustomKeyCode", "-1"), QString());
}

TEST_F(SettingsByNameTest, UnknownKeys_AreRefused) {
    EXPECT_EQ(refusal("hudsize", "large"), QStringLiteral("there is no setting \"hudsize\""));
    EXPECT_NE(refusal("objectName", "x"), QString()); // a property, but no setting
    EXPECT_THROW((void)get("objectName"), BadSetting);
    EXPECT_THROW((void)get(""), BadSetting);
}

TEST_F(SettingsByNameTest, OneBadAmongSeveral_StoresNone) {
    EXPECT_THROW(byName.set({setting("hudSize", "large"), setting("showHUD", "maybe")}), BadSetting);
    EXPECT_THROW(byName.set({setting("hudSize", "large"), setting("nothing", "1")}), BadSetting);
    EXPECT_EQ(settings.hudSize(), QStringLiteral("small"));
    EXPECT_FALSE(QFile::exists(path));
    byName.set({setting("hudSize", "large"), setting("showHUD", "false"), setting("hudSize", "medium")});
    EXPECT_EQ(settings.hudSize(), QStringLiteral("medium"));
    EXPECT_FALSE(settings.showHUD());
}

TEST_F(SettingsByNameTest, StoreThatCannotBeWritten_IsAFailureOfItsOwn) {
    QDir(folder.filePath(QStringLiteral("settings"))).removeRecursively();
    try {
        set("hudSize", "large");
        FAIL() << "stored";
    } catch (const BadSetting&) {
        FAIL() << "the setting is fine";
    } catch (const PlainError& error) {
        EXPECT_EQ(error.localizedDescription(), QStringLiteral("the settings can't be stored"));
    }
    QDir().mkpath(folder.filePath(QStringLiteral("settings")));
    set("hudSize", "large");
    EXPECT_EQ(UserDefaults(path).string(QStringLiteral("hudSize")), QStringLiteral("large"));
}
