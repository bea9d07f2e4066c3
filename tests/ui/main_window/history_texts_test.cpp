#include "support/history_stage.h"
#include "ui/main_window/history_texts.h"

#include <gmock/gmock.h>

#include <limits>

using namespace velmora;
using namespace velmora::test;

namespace {

class HistoryTexts : public testing::Test {
protected:
    HistoryTexts() { useMoscowTime(); }
};

} // namespace

TEST_F(HistoryTexts, DateLabel_NamesTodayAndYesterday) {
    const Date now = moscow(2026, 11, 21, 15);
    struct Case {
        Date date;
        const char* label;
    };
    for (const Case& c : {
             Case{now, "Сегодня · 15:00"},
             Case{moscow(2026, 11, 21, 0, 0), "Сегодня · 00:00"},
             Case{moscow(2026, 11, 20, 23, 59), "Вчера · 23:59"},
             Case{moscow(2026, 11, 20, 0, 5), "Вчера · 00:05"},
             Case{moscow(2026, 11, 19, 9, 7), "19 ноября 09:07"},
             Case{moscow(2026, 5, 1, 8), "1 мая 08:00"},
             Case{moscow(2025, 11, 21, 15), "21 ноября 15:00"},
         })
        EXPECT_EQ(dateLabel(c.date, now).toStdString(), c.label);
}

TEST_F(HistoryTexts, DayTitle_HasTheMonthInTheGenitive) {
    const char* months[] = {"января", "февраля", "марта",    "апреля",  "мая",    "июня",
                            "июля",   "августа", "сентября", "октября", "ноября", "декабря"};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(dayTitle(QDate(2026, month, 3)),
                  QStringLiteral("3 ") + QString::fromUtf8(months[month - 1]));
}

TEST_F(HistoryTexts, Durations_AreWholeSeconds) {
    struct Case {
        double seconds;
        const char* brief;
        const char* full;
    };
    for (const Case& c : {
             Case{0, "0:00", "00:00"},
             Case{0.99, "0:00", "00:00"},
             Case{7.6, "0:07", "00:07"},
             Case{59.99, "0:59", "00:59"},
             Case{60, "1:00", "01:00"},
             Case{754, "12:34", "12:34"},
             Case{3600, "60:00", "60:00"},
             Case{6001, "100:01", "100:01"},
             Case{-5, "0:00", "00:00"},
             Case{std::numeric_limits<double>::quiet_NaN(), "0:00", "00:00"},
             Case{1e300, "16666666:40", "16666666:40"},
         }) {
        EXPECT_EQ(shortDuration(c.seconds).toStdString(), c.brief);
        EXPECT_EQ(longDuration(c.seconds).toStdString(), c.full);
    }
}

TEST_F(HistoryTexts, WordCount_CountsBetweenWhiteSpace) {
    EXPECT_EQ(wordCount({}), 0);
    EXPECT_EQ(wordCount(QStringLiteral(" \n\t ")), 0);
    EXPECT_EQ(wordCount(QStringLiteral("слово")), 1);
    EXPECT_EQ(wordCount(QStringLiteral("  два\nслова ")), 2);
    EXPECT_EQ(wordCount(QStringLiteral("кто-то, где-то")), 2);
    EXPECT_EQ(wordCount(QStringLiteral("раз 🙂 два")), 3);
}

TEST_F(HistoryTexts, TagForBundle_FirstHitDecides) {
    struct Case {
        const char* id;
        const char* tag;
    };
    for (const Case& c : {
             Case{"cursor", "Cursor"},
             Case{"com.example.ChatGPT", "ChatGPT"},
             Case{"com.openai.desktop", "ChatGPT"},
             Case{"org.gnome.Gmail", "Mail"},
             Case{"MAIL", "Mail"},
             Case{"com.example.iCal", "Calendar"},
             Case{"org.gnome.Calendar", "Calendar"},
             Case{"notion-app", "Notion"},
             Case{"org.telegram.desktop", "Telegram"},
             Case{"Safari", "Браузер"},
             Case{"google-chrome", "Браузер"},
             Case{"CHROME", "Браузер"},
             Case{"org.example.TextEdit", "Заметки"},
             Case{"org.gnome.Notes", "Заметки"},
             Case{"NOTES", "Заметки"},
             Case{"com.notion.mail", "Mail"},
             Case{"chrome-notes", "Браузер"},
             Case{"cursor-mail", "Cursor"},
             Case{"org.gnome.gedit", "Velmora"},
             Case{"", "Velmora"},
         })
        EXPECT_EQ(tagForBundle(QString::fromUtf8(c.id)).name.toStdString(), c.tag) << c.id;
}

TEST_F(HistoryTexts, TagForBundle_WithoutAnId_IsVelmora) {
    EXPECT_EQ(tagForBundle({}), TagStyle{QStringLiteral("Velmora")});
}

TEST_F(HistoryTexts, RowPreview_IsOneParagraphAndNeverHalfACharacter) {
    EXPECT_EQ(rowPreview(QStringLiteral("  раз\n\nдва\t три ")), QStringLiteral("раз два три"));
    EXPECT_EQ(rowPreview({}), QString());
    const QString family = QStringLiteral("👩‍👩‍👧‍👦");
    const QString families = family.repeated(100);
    const QString preview = rowPreview(families);
    EXPECT_GT(preview.size(), 0);
    EXPECT_LT(preview.size(), families.size());
    EXPECT_EQ(preview.size() % family.size(), 0);
}

TEST_F(HistoryTexts, HiddenItemsLabel_HasThePluralFormOfTheNumber) {
    struct Case {
        int count;
        const char* records;
    };
    for (const Case& c :
         {Case{1, "1 запись"}, Case{2, "2 записи"}, Case{4, "4 записи"}, Case{5, "5 записей"},
          Case{11, "11 записей"}, Case{12, "12 записей"}, Case{14, "14 записей"}, Case{20, "20 записей"},
          Case{21, "21 запись"}, Case{22, "22 записи"}, Case{100, "100 записей"}, Case{101, "101 запись"},
          Case{111, "111 записей"}, Case{200, "200 записей"}})
        EXPECT_EQ(hiddenItemsLabel(c.count, true, false),
                  QStringLiteral("Фильтр скрывает ") + QString::fromUtf8(c.records));
}

TEST_F(HistoryTexts, HiddenItemsLabel_SaysWhatHides) {
    EXPECT_EQ(hiddenItemsLabel(3, false, true), QStringLiteral("Поиск скрывает 3 записи"));
    EXPECT_EQ(hiddenItemsLabel(3, true, true), QStringLiteral("Фильтр и поиск скрывают 3 записи"));
    EXPECT_EQ(hiddenItemsLabel(0, true, true), QString());
    EXPECT_EQ(hiddenItemsLabel(3, false, false), QString());
}

TEST_F(HistoryTexts, WordsLabel_HasThePluralFormOfTheNumber) {
    EXPECT_EQ(wordsLabel(1), QStringLiteral("1 слово"));
    EXPECT_EQ(wordsLabel(3), QStringLiteral("3 слова"));
    EXPECT_EQ(wordsLabel(12), QStringLiteral("12 слов"));
}
