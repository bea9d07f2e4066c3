#include "core/key_code_names.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace velmora;

TEST(KeyCodeNames, Label_NinetyNineCodes_HaveNamesOfTheirOwn) {
    QSet<QString> labels;
    for (int code = 0; code < 128; ++code) {
        const QString label = KeyCodeNames::label(code);
        if (label != QStringLiteral("key %1").arg(code))
            labels.insert(label);
    }
    EXPECT_EQ(labels.size(), 99);
}

TEST(KeyCodeNames, Label_SomeOfEachRow_AreRight) {
    EXPECT_EQ(KeyCodeNames::label(0), QStringLiteral("A"));
    EXPECT_EQ(KeyCodeNames::label(9), QStringLiteral("V"));
    EXPECT_EQ(KeyCodeNames::label(22), QStringLiteral("6"));
    EXPECT_EQ(KeyCodeNames::label(42), QStringLiteral("\\"));
    EXPECT_EQ(KeyCodeNames::label(49), QStringLiteral("Space"));
    EXPECT_EQ(KeyCodeNames::label(91), QStringLiteral("Num 8"));
    EXPECT_EQ(KeyCodeNames::label(117), QStringLiteral("Fwd Delete"));
    EXPECT_EQ(KeyCodeNames::label(126), QStringLiteral("↑"));
    EXPECT_EQ(KeyCodeNames::label(122), QStringLiteral("F1"));
    EXPECT_EQ(KeyCodeNames::label(90), QStringLiteral("F20"));
}

TEST(KeyCodeNames, Label_CodeWithoutAName_IsItsNumber) {
    EXPECT_EQ(KeyCodeNames::label(10), QStringLiteral("key 10"));
    EXPECT_EQ(KeyCodeNames::label(52), QStringLiteral("key 52"));
    EXPECT_EQ(KeyCodeNames::label(63), QStringLiteral("key 63"));
    EXPECT_EQ(KeyCodeNames::label(-1), QStringLiteral("key -1"));
}

TEST(KeyCodeNames, IsFunctionKey_F1ToF20AndNoOther) {
    int count = 0;
    for (int code = -1; code < 200; ++code)
        count += KeyCodeNames::isFunctionKey(code) ? 1 : 0;
    EXPECT_EQ(count, 20);
    EXPECT_TRUE(KeyCodeNames::isFunctionKey(122));
    EXPECT_FALSE(KeyCodeNames::isFunctionKey(0));
}
