#include "accounts/preferences.h"
#include "http/http_error.h"

#include <Poco/JSON/Parser.h>
#include <gmock/gmock.h>

namespace velmora::server {
namespace {

PreferencesPatch patchFrom(const std::string& json) {
    return PreferencesPatch::fromJson(*Poco::JSON::Parser().parse(json).extract<Poco::JSON::Object::Ptr>());
}

TEST(PreferencesPatch, AllKeys_AreRead) {
    const auto patch = patchFrom(
        R"({"transcribeLanguage":"English","cleanupEnabled":false,"devModeEnabled":true,"meetingStorageMode":"DRIVE"})");
    EXPECT_EQ(patch.transcribeLanguage, "English");
    EXPECT_EQ(patch.cleanupEnabled, false);
    EXPECT_EQ(patch.devModeEnabled, true);
    EXPECT_EQ(patch.meetingStorageMode, "DRIVE");
}

TEST(PreferencesPatch, EmptyAndUnknownKeys_ChangeNothing) {
    const Preferences before{.transcribeLanguage = "ru",
                             .cleanupEnabled = false,
                             .devModeEnabled = true,
                             .meetingStorageMode = "BOTH"};
    EXPECT_EQ(patchFrom("{}").appliedTo(before), before);
    EXPECT_EQ(patchFrom(R"({"later":[1,2]})").appliedTo(before), before);
}

struct BadValue {
    const char* json;
    const char* field;
};

class PreferencesPatchRefusal : public testing::TestWithParam<BadValue> {};

TEST_P(PreferencesPatchRefusal, WrongValue_Is400AndNamesTheField) {
    try {
        static_cast<void>(patchFrom(GetParam().json));
        ADD_FAILURE();
    } catch (const HttpError& error) {
        EXPECT_EQ(error.status(), 400);
        EXPECT_EQ(error.code(), "invalid_preferences");
        EXPECT_EQ(error.details().at("field"), GetParam().field);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Values, PreferencesPatchRefusal,
    testing::Values(BadValue{R"({"cleanupEnabled":"true"})", "cleanupEnabled"},
                    BadValue{R"({"cleanupEnabled":1})", "cleanupEnabled"},
                    BadValue{R"({"devModeEnabled":null})", "devModeEnabled"},
                    BadValue{R"({"transcribeLanguage":5})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":""})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"no language"})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":null})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"e"})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"engl"})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"en\n"})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"en-x"})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"en-ninechars"})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"en-US-posix"})", "transcribeLanguage"},
                    BadValue{R"({"transcribeLanguage":"en<b>"})", "transcribeLanguage"},
                    BadValue{R"({"meetingStorageMode":null})", "meetingStorageMode"},
                    BadValue{R"({"meetingStorageMode":""})", "meetingStorageMode"},
                    BadValue{R"({"meetingStorageMode":"CLOUD"})", "meetingStorageMode"},
                    BadValue{R"({"meetingStorageMode":["BOTH"]})", "meetingStorageMode"}));

TEST(Preferences, AbsentStorageMode_IsLeftOutOfJson) {
    Preferences preferences;
    EXPECT_FALSE(preferences.toJson().has("meetingStorageMode"));
    preferences.meetingStorageMode = "LOCAL";
    EXPECT_TRUE(preferences.toJson().has("meetingStorageMode"));
}

} // namespace
} // namespace velmora::server
