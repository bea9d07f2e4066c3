#include "speech/language.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

TEST(Language, PreferenceValues_BecomeCodes) {
    EXPECT_TRUE(Language::fromPreference("auto")->isAutomatic());
    EXPECT_EQ(Language::fromPreference("English")->code(), "en");
    EXPECT_EQ(Language::fromPreference("Русский")->code(), "ru");
    EXPECT_EQ(Language::fromPreference("ru")->code(), "ru");
    EXPECT_EQ(Language::fromPreference("pt-BR")->code(), "pt");
    for (const std::string bad : {"", "r", "rus sian", "../x", "en-", "english language"}) {
        EXPECT_FALSE(Language::fromPreference(bad)) << bad;
    }
}

} // namespace
} // namespace velmora::server
