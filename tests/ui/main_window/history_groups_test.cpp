#include "support/history_stage.h"
#include "ui/main_window/history_groups.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString today = QStringLiteral("Сегодня");
const QString week = QStringLiteral("7 дней");
const QString all = QStringLiteral("Всё");

const Date now = moscow(2026, 11, 21, 15);

QStringList texts(const std::vector<HistoryItem>& items) {
    QStringList result;
    for (const HistoryItem& item : items)
        result.append(item.cleanedText);
    return result;
}

QStringList found(const QString& text, const QString& search) {
    return texts(filtered({dictated(now, text)}, today, search, now));
}

/// The groups as "title: texts".
QStringList grouped(const std::vector<HistoryItem>& items) {
    QStringList result;
    for (const DayGroup& group : groupedByDay(items, now))
        result.append(group.day + QStringLiteral(": ") + texts(group.items).join(QLatin1Char(' ')));
    return result;
}

class HistoryGroups : public testing::Test {
protected:
    HistoryGroups() { useMoscowTime(); }
};

} // namespace

TEST_F(HistoryGroups, Filters_AreKnownByTheirTextInThisOrder) {
    EXPECT_THAT(historyFilters(), ElementsAre(today, week, all));
    EXPECT_EQ(filterOfAll(), all);
}

TEST_F(HistoryGroups, Filtered_LimitsAgeStrictly) {
    struct Case {
        QString filter;
        Date::duration age;
        bool stays;
    };
    for (const Case& c : {
             Case{today, 0s, true},
             Case{today, 24h - 1us, true},
             Case{today, 24h, false},
             Case{today, 25h, false},
             Case{today, -48h, true}, // the clock was set back meanwhile
             Case{week, 24h, true},
             Case{week, 168h - 1us, true},
             Case{week, 168h, false},
             Case{all, 168h, true},
             Case{all, 24h * 365 * 200, true},
         })
        EXPECT_EQ(filtered({dictated(now - c.age, QString())}, c.filter, {}, now).size() == 1, c.stays)
            << c.filter.toStdString() << " " << c.age.count();
}

TEST_F(HistoryGroups, Filtered_UnknownFilter_SetsNoLimit) {
    const std::vector items{dictated(now - 24h * 400, QStringLiteral("старое"))};
    for (const char* filter : {"", "сегодня", "30 дней"})
        EXPECT_EQ(filtered(items, QString::fromUtf8(filter), {}, now).size(), 1U) << filter;
}

TEST_F(HistoryGroups, Filtered_SearchIgnoresCase) {
    for (const char* search : {"ПРИВЕТ", "привет", "пРиВеТ, м", "МИР", ""})
        EXPECT_THAT(found(QStringLiteral("Привет, мир"), QString::fromUtf8(search)),
                    ElementsAre(QStringLiteral("Привет, мир")))
            << search;
    EXPECT_THAT(found(QStringLiteral("Привет, мир"), QStringLiteral("привет мир")), IsEmpty());
    EXPECT_THAT(found(QStringLiteral("Straße"), QStringLiteral("STRASSE")).size(), 1);
    EXPECT_THAT(found(QStringLiteral("ὈΔΥΣΣΕΎΣ"), QStringLiteral("ὀδυσσεύς")).size(), 1);
    EXPECT_THAT(found(QStringLiteral("ещё"), QStringLiteral("ЕЩЁ")).size(), 1);
}

TEST_F(HistoryGroups, Filtered_LettersComposedOtherwise_AreTheSame) {
    const QString composed = QStringLiteral("мой ёж");
    const QString decomposed = composed.normalized(QString::NormalizationForm_D);
    ASSERT_NE(composed, decomposed);
    EXPECT_EQ(found(composed, decomposed).size(), 1);
    EXPECT_EQ(found(decomposed, composed).size(), 1);
}

TEST_F(HistoryGroups, Filtered_LooksAtTheCleanedTextAlone) {
    HistoryItem item = dictated(now, QStringLiteral("чистый"));
    item.rawText = QStringLiteral("сырой");
    EXPECT_THAT(filtered({item}, today, QStringLiteral("сырой"), now), IsEmpty());
}

TEST_F(HistoryGroups, Filtered_KeepsTheOrder) {
    const std::vector items{dictated(now - 3h, QStringLiteral("а")), dictated(now - 1h, QStringLiteral("б")),
                            dictated(now - 30h, QStringLiteral("в")),
                            dictated(now - 2h, QStringLiteral("г"))};
    EXPECT_THAT(texts(filtered(items, today, {}, now)),
                ElementsAre(QStringLiteral("а"), QStringLiteral("б"), QStringLiteral("г")));
}

TEST_F(HistoryGroups, ItemOf25HoursAgo_IsHiddenUnderTodayThoughItIsYesterdays) {
    const Date date = now - 25h;
    const std::vector items{dictated(date, QStringLiteral("а"))};
    EXPECT_THAT(filtered(items, today, {}, now), IsEmpty());
    EXPECT_THAT(grouped(filtered(items, week, {}, now)), ElementsAre(QStringLiteral("Вчера: а")));
}

TEST_F(HistoryGroups, ItemOf23HoursAgo_IsShownUnderTodayInYesterdaysSection) {
    const std::vector items{dictated(now - 23h, QStringLiteral("а"))};
    EXPECT_THAT(grouped(filtered(items, today, {}, now)), ElementsAre(QStringLiteral("Вчера: а")));
}

TEST_F(HistoryGroups, GroupedByDay_GoesByTheCalendarNewestDayFirst) {
    EXPECT_THAT(grouped({
                    dictated(moscow(2026, 11, 21, 14, 59), QStringLiteral("а")),
                    dictated(moscow(2026, 11, 21, 0, 0), QStringLiteral("б")),
                    dictated(moscow(2026, 11, 20, 23, 59), QStringLiteral("в")),
                    dictated(moscow(2026, 11, 19, 23, 59), QStringLiteral("г")),
                    dictated(moscow(2026, 11, 19, 0, 0), QStringLiteral("д")),
                    dictated(moscow(2026, 5, 1), QStringLiteral("е")),
                }),
                ElementsAre(QStringLiteral("Сегодня: а б"), QStringLiteral("Вчера: в"),
                            QStringLiteral("19 ноября: г д"), QStringLiteral("1 мая: е")));
}

TEST_F(HistoryGroups, GroupedByDay_SortsByDayNotByTitleOrArrival) {
    EXPECT_THAT(grouped({
                    dictated(moscow(2026, 9, 9), QStringLiteral("а")),
                    dictated(moscow(2026, 10, 10), QStringLiteral("б")),
                    dictated(moscow(2026, 9, 9, 8), QStringLiteral("в")),
                    dictated(moscow(2026, 11, 21, 9), QStringLiteral("г")),
                    dictated(moscow(2026, 11, 23), QStringLiteral("д")), // the clock was set back
                }),
                ElementsAre(QStringLiteral("Сегодня: г"), QStringLiteral("23 ноября: д"),
                            QStringLiteral("10 октября: б"), QStringLiteral("9 сентября: а в")));
}

TEST_F(HistoryGroups, GroupedByDay_SameDayOfTwoYears_IsOneGroup) {
    EXPECT_THAT(grouped({
                    dictated(moscow(2026, 3, 8), QStringLiteral("а")),
                    dictated(moscow(2026, 1, 2), QStringLiteral("б")),
                    dictated(moscow(2025, 3, 8), QStringLiteral("в")),
                    dictated(moscow(2025, 11, 21), QStringLiteral("г")),
                }),
                ElementsAre(QStringLiteral("8 марта: а в"), QStringLiteral("2 января: б"),
                            QStringLiteral("21 ноября: г")));
}

TEST_F(HistoryGroups, GroupedByDay_NothingThere_HasNoGroups) {
    EXPECT_THAT(groupedByDay({}, now), IsEmpty());
}
