#include "speech/text_cleaner.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

TextCleaner english() {
    return TextCleaner(Language::fromPreference("en").value());
}

TextCleaner russian() {
    return TextCleaner(Language::fromPreference("ru").value());
}

TEST(TextCleaner, FirstPhrase_BeginsWithCapital_LaterOnesDoNot) {
    auto cleaner = english();
    EXPECT_EQ(cleaner.clean("hello world"), "Hello world");
    EXPECT_EQ(cleaner.clean("how are you"), "how are you");
    EXPECT_EQ(cleaner.ending(), ".");
}

TEST(TextCleaner, RussianText_IsCapitalised) {
    auto cleaner = russian();
    EXPECT_EQ(cleaner.clean("привет мир"), "Привет мир");
}

TEST(TextCleaner, Hesitations_AreDropped) {
    EXPECT_EQ(english().clean("um hello uh world hmm"), "Hello world");
    EXPECT_EQ(russian().clean("эээ привет мм мир"), "Привет мир");
}

TEST(TextCleaner, PhraseOfHesitationsAlone_IsEmpty_AndTheNextBeginsTheText) {
    auto cleaner = english();
    EXPECT_EQ(cleaner.clean("um uh"), "");
    EXPECT_EQ(cleaner.ending(), "");
    EXPECT_EQ(cleaner.clean("hello"), "Hello");
}

TEST(TextCleaner, HesitationWithCapital_HandsItOn) {
    auto cleaner = english();
    EXPECT_EQ(cleaner.clean("It works. Um, really well."), "It works. Really well.");
}

TEST(TextCleaner, HesitationAtTheEnd_LeavesItsStop) {
    EXPECT_EQ(english().clean("It works, um."), "It works.");
}

TEST(TextCleaner, StammeredWord_IsKeptOnce) {
    EXPECT_EQ(english().clean("go to the the store"), "Go to the store");
    EXPECT_EQ(russian().clean("я я пошёл в в магазин"), "Я пошёл в магазин");
}

TEST(TextCleaner, StammerAcrossPhrases_IsKeptOnce) {
    auto cleaner = english();
    EXPECT_EQ(cleaner.clean("go to the"), "Go to the");
    EXPECT_EQ(cleaner.clean("the store"), "store");
}

TEST(TextCleaner, WordsMeantTwice_Stay) {
    EXPECT_EQ(english().clean("very very good"), "Very very good");
    EXPECT_EQ(english().clean("five five one 7 7"), "Five five one 7 7");
    EXPECT_EQ(russian().clean("да да очень очень"), "Да да очень очень");
}

TEST(TextCleaner, RepetitionAfterPunctuation_Stays) {
    EXPECT_EQ(english().clean("Wait, wait. Wait"), "Wait, wait. Wait");
}

TEST(TextCleaner, StammerWithStop_KeepsTheStop) {
    EXPECT_EQ(english().clean("to the store store."), "To the store.");
}

TEST(TextCleaner, PronounI_IsCapitalInEnglishOnly) {
    EXPECT_EQ(english().clean("so i think i'm right"), "So I think I'm right");
    EXPECT_EQ(russian().clean("переменная i здесь"), "Переменная i здесь");
}

TEST(TextCleaner, BlanksAreJoined) {
    EXPECT_EQ(english().clean("  one \n two\t "), "One two");
}

TEST(TextCleaner, TextThatEndsASentence_GetsNoSecondStop) {
    for (const std::string text : {"Done.", "Done!", "Done?", "Done…"}) {
        auto cleaner = english();
        EXPECT_EQ(cleaner.clean(text), text);
        EXPECT_EQ(cleaner.ending(), "") << text;
    }
}

TEST(TextCleaner, EmptyText_HasNoEnding) {
    EXPECT_EQ(english().ending(), "");
}

TEST(TextCleaner, BrokenUtf8_IsNoDanger) {
    auto cleaner = english();
    EXPECT_THAT(cleaner.clean("\xD0 ok \xFF\xFE"), testing::HasSubstr("Ok"));
}

} // namespace
} // namespace velmora::server
