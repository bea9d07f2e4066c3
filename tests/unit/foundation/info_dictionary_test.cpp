#include "foundation/info_dictionary.h"

#include <gtest/gtest.h>

using velmora::InfoDictionary;

TEST(InfoDictionary, String_InTheFile_IsGiven) {
    const InfoDictionary info({{QStringLiteral("VelmorTestKey"), QStringLiteral("a")}});
    EXPECT_EQ(info.string(QStringLiteral("VelmorTestKey")), QStringLiteral("a"));
}

TEST(InfoDictionary, String_AbsentOrNotAString_IsNone) {
    const InfoDictionary info({{QStringLiteral("VelmorTestKey"), 7}});
    EXPECT_EQ(info.string(QStringLiteral("VelmorTestKey")), std::nullopt);
    EXPECT_EQ(info.string(QStringLiteral("VelmorOtherKey")), std::nullopt);
}

TEST(InfoDictionary, String_EnvironmentHasTheKey_EnvironmentWins) {
    qputenv("VelmorTestKey", "from outside");
    const InfoDictionary info({{QStringLiteral("VelmorTestKey"), QStringLiteral("a")}});
    EXPECT_EQ(info.string(QStringLiteral("VelmorTestKey")), QStringLiteral("from outside"));
    qunsetenv("VelmorTestKey");
}
