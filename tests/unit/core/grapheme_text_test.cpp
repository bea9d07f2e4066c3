#include "core/grapheme_text.h"

#include <gtest/gtest.h>

using velmora::textBeyondPrefix;

TEST(GraphemeText, Prefix_GivesWhatFollows) {
    EXPECT_EQ(textBeyondPrefix(QStringLiteral("Привет, мир."), QStringLiteral("Привет")),
              QStringLiteral(", мир."));
    EXPECT_EQ(textBeyondPrefix(QStringLiteral("abc"), QString()), QStringLiteral("abc"));
}

TEST(GraphemeText, EqualTexts_LeaveNothing) {
    EXPECT_EQ(textBeyondPrefix(QStringLiteral("abc"), QStringLiteral("abc")), QString());
}

TEST(GraphemeText, NoPrefix_IsNone) {
    EXPECT_EQ(textBeyondPrefix(QStringLiteral("abc"), QStringLiteral("abd")), std::nullopt);
    EXPECT_EQ(textBeyondPrefix(QStringLiteral("ab"), QStringLiteral("abc")), std::nullopt);
}

TEST(GraphemeText, ComposedAndDecomposed_AreTheSameCharacter) {
    EXPECT_EQ(textBeyondPrefix(QStringLiteral("мой дом"), QStringLiteral("мои\u0306")),
              QStringLiteral(" дом"));
}

TEST(GraphemeText, HalfACluster_IsNoPrefix) {
    EXPECT_EQ(textBeyondPrefix(QStringLiteral("e\u0301t"), QStringLiteral("e")), std::nullopt);
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467!");
    EXPECT_EQ(textBeyondPrefix(family, QStringLiteral("\U0001F468")), std::nullopt);
    EXPECT_EQ(textBeyondPrefix(family, family.chopped(1)), QStringLiteral("!"));
}
