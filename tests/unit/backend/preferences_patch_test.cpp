#include "backend/backend_coder.h"
#include "backend/preferences_patch.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace velmora;

namespace {

const PreferencesPatch full{.transcribeLanguage = QStringLiteral("en"),
                            .cleanupEnabled = false,
                            .devModeEnabled = true,
                            .meetingStorageMode = QStringLiteral("cloud")};

} // namespace

TEST(PreferencesPatch, Empty_IsAnEmptyObjectAndChangesNothing) {
    EXPECT_EQ(backendCoder.encode(PreferencesPatch()), "{}");
    const BackendPreferences before{QStringLiteral("de"), false, true, QStringLiteral("local")};
    EXPECT_EQ(PreferencesPatch().appliedTo(before), before);
    PreferencesPatch merged = full;
    merged.merge({});
    EXPECT_EQ(merged, full);
}

TEST(PreferencesPatch, OneField_EncodesThatAloneWithoutNulls) {
    EXPECT_EQ(backendCoder.encode(PreferencesPatch{.transcribeLanguage = QStringLiteral("en")}),
              R"({"transcribeLanguage":"en"})");
    EXPECT_EQ(backendCoder.encode(PreferencesPatch{.cleanupEnabled = false}), R"({"cleanupEnabled":false})");
    EXPECT_EQ(backendCoder.encode(PreferencesPatch{.devModeEnabled = true}), R"({"devModeEnabled":true})");
    EXPECT_EQ(backendCoder.encode(PreferencesPatch{.meetingStorageMode = QStringLiteral("cloud")}),
              R"({"meetingStorageMode":"cloud"})");
}

TEST(PreferencesPatch, AllFields_EncodeUnderTheirNames) {
    EXPECT_EQ(QJsonDocument::fromJson(backendCoder.encode(full)).object(),
              (QJsonObject{{QStringLiteral("transcribeLanguage"), QStringLiteral("en")},
                           {QStringLiteral("cleanupEnabled"), false},
                           {QStringLiteral("devModeEnabled"), true},
                           {QStringLiteral("meetingStorageMode"), QStringLiteral("cloud")}}));
}

TEST(PreferencesPatch, AppliedTo_ReplacesWhatIsPresentAndLeavesTheRest) {
    const BackendPreferences before{QStringLiteral("de"), true, false, std::nullopt};
    EXPECT_EQ(PreferencesPatch{.cleanupEnabled = false}.appliedTo(before),
              (BackendPreferences{QStringLiteral("de"), false, false, std::nullopt}));
    EXPECT_EQ(full.appliedTo(before),
              (BackendPreferences{QStringLiteral("en"), false, true, QStringLiteral("cloud")}));
}

TEST(PreferencesPatch, Merge_LaterOverridesAndDifferentFieldsAddUp) {
    PreferencesPatch patch{.transcribeLanguage = QStringLiteral("en")};
    patch.merge({.cleanupEnabled = false});
    patch.merge({.transcribeLanguage = QStringLiteral("de")});
    EXPECT_EQ(patch, (PreferencesPatch{.transcribeLanguage = QStringLiteral("de"), .cleanupEnabled = false}));
}
