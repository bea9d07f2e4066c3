#include "support/history_stage.h"
#include "ui/main_window/history_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class HistoryModelTest : public testing::Test, protected HistoryStage {
protected:
    HistoryModelTest() { model.setSource(&source); }

    [[nodiscard]] QVariant cell(int row, HistoryModel::Role role) const {
        return model.data(model.index(row), role);
    }
    /// The previews, with "title count:" before the first of each day.
    [[nodiscard]] QStringList rows() const {
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QString title = cell(row, HistoryModel::SectionTitle).toString();
            const QString text = cell(row, HistoryModel::Preview).toString();
            rows.append(title.isEmpty()
                            ? text
                            : QStringLiteral("%1 %2: %3")
                                  .arg(title, cell(row, HistoryModel::SectionCount).toString(), text));
        }
        return rows;
    }

    HistoryModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(HistoryModelTest, Opened_ShowsTheLast24Hours) {
    add(moscow(2026, 11, 1), QStringLiteral("старое"));
    add(moscow(2026, 11, 20, 16), QStringLiteral("вечером"));
    add(moscow(2026, 11, 21, 9), QStringLiteral("утром"));
    EXPECT_EQ(model.filter(), QStringLiteral("Сегодня"));
    EXPECT_THAT(rows(), ElementsAre(QStringLiteral("Сегодня 1: утром"), QStringLiteral("Вчера 1: вечером")));
    EXPECT_EQ(model.hiddenLabel(), QStringLiteral("Фильтр скрывает 1 запись"));
}

TEST_F(HistoryModelTest, Row_HasWhatIsShownOfIt) {
    add(dictated(moscow(2026, 11, 21, 9, 5), QStringLiteral("Доброе\nутро"),
                 QStringLiteral("org.telegram.desktop"), 67.8));
    EXPECT_EQ(cell(0, HistoryModel::Time), QStringLiteral("09:05"));
    EXPECT_EQ(cell(0, HistoryModel::Tag), QStringLiteral("Telegram"));
    EXPECT_EQ(cell(0, HistoryModel::Preview), QStringLiteral("Доброе утро"));
    EXPECT_EQ(cell(0, HistoryModel::Duration), QStringLiteral("1:07"));
    EXPECT_EQ(cell(0, HistoryModel::RowName), QStringLiteral("09:05, Telegram, Доброе утро"));
}

TEST_F(HistoryModelTest, SearchTyped_OnlyTheDifferenceChanges) {
    add(moscow(2026, 11, 21, 8), QStringLiteral("первый отчёт"));
    add(moscow(2026, 11, 21, 9), QStringLiteral("письмо"));
    add(moscow(2026, 11, 21, 10), QStringLiteral("второй отчёт"));
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
    model.setSearch(QStringLiteral("ОТЧЁТ"));
    EXPECT_THAT(rows(),
                ElementsAre(QStringLiteral("Сегодня 2: второй отчёт"), QStringLiteral("первый отчёт")));
    EXPECT_EQ(removals.size(), 1);
    model.setSearch(QStringLiteral("отчёта"));
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_TRUE(model.isEmpty());
    EXPECT_EQ(removals.size(), 2);
    EXPECT_EQ(model.hiddenLabel(), QStringLiteral("Фильтр и поиск скрывают 3 записи"));
    model.setSearch({});
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(insertions.size(), 1);
    EXPECT_TRUE(resets.isEmpty());
}

TEST_F(HistoryModelTest, ItemAdded_IsOneRowOnTop) {
    add(moscow(2026, 11, 21, 8), QStringLiteral("раньше"));
    const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);
    add(moscow(2026, 11, 21, 14), QStringLiteral("только что"));
    EXPECT_THAT(rows(), ElementsAre(QStringLiteral("Сегодня 2: только что"), QStringLiteral("раньше")));
    ASSERT_EQ(insertions.size(), 1);
    EXPECT_EQ(insertions[0][1].toInt(), 0);
    EXPECT_EQ(insertions[0][2].toInt(), 0);
    EXPECT_TRUE(removals.isEmpty());
}

TEST_F(HistoryModelTest, MidnightPasses_TitlesMoveOnWithoutMovingRows) {
    add(moscow(2026, 11, 20, 16), QStringLiteral("вчерашнее"));
    add(moscow(2026, 11, 21, 14), QStringLiteral("сегодняшнее"));
    model.setFilter(QStringLiteral("Всё"));
    const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);
    loop.advance(9h);
    Q_EMIT source.changed();
    EXPECT_THAT(rows(), ElementsAre(QStringLiteral("Вчера 1: сегодняшнее"),
                                    QStringLiteral("20 ноября 1: вчерашнее")));
    EXPECT_TRUE(insertions.isEmpty());
    EXPECT_TRUE(removals.isEmpty());
}

TEST_F(HistoryModelTest, TimePasses_ItemsGrowTooOldForTheFilter) {
    add(moscow(2026, 11, 20, 16), QStringLiteral("вчерашнее"));
    ASSERT_EQ(model.rowCount(), 1);
    loop.advance(1h - 1us);
    Q_EMIT source.changed();
    EXPECT_EQ(model.rowCount(), 1);
    loop.advance(1us);
    Q_EMIT source.changed();
    EXPECT_TRUE(model.isEmpty());
}

TEST_F(HistoryModelTest, NothingChanged_NothingIsSaid) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("раз"));
    model.expand(0);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy expanded(&model, &HistoryModel::expandedChanged);
    const QSignalSpy hidden(&model, &HistoryModel::hiddenLabelChanged);
    Q_EMIT source.changed();
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_TRUE(expanded.isEmpty());
    EXPECT_TRUE(hidden.isEmpty());
}

TEST_F(HistoryModelTest, OrderTurnedOver_RowsFollow) {
    const Date base = moscow(2026, 11, 21, 14);
    add(base, QStringLiteral("а"));
    add(moscow(2026, 10, 1), QStringLiteral("б"));
    add(base, QStringLiteral("в"));
    add(moscow(2026, 11, 21, 1), QStringLiteral("г"));
    model.setFilter(QStringLiteral("Всё"));
    EXPECT_THAT(rows(), ElementsAre(QStringLiteral("Сегодня 3: г"), QStringLiteral("в"), QStringLiteral("а"),
                                    QStringLiteral("1 октября 1: б")));
    // A clock that is set back makes of today's items some of a day to come, and of October's today's.
    loop.advance(moscow(2027, 10, 1) - moscow(2026, 11, 21, 15));
    Q_EMIT source.changed();
    EXPECT_EQ(rows().size(), 4);
    model.setSearch(QStringLiteral("б"));
    EXPECT_THAT(rows(), ElementsAre(QStringLiteral("1 октября 1: б")));
}

TEST_F(HistoryModelTest, SameIdTwiceInADamagedFile_IsTwoRows) {
    const HistoryItem twin = dictated(moscow(2026, 11, 21, 14), QStringLiteral("двойник"));
    add(twin);
    add(moscow(2026, 11, 21, 14), QStringLiteral("между"));
    add(twin);
    EXPECT_EQ(model.rowCount(), 3);
    model.setSearch(QStringLiteral("двойник"));
    EXPECT_EQ(model.rowCount(), 2);
    model.setSearch({});
    EXPECT_EQ(model.rowCount(), 3);
}

TEST_F(HistoryModelTest, ShowAll_TakesFilterAndSearchAway) {
    add(moscow(2026, 1, 5), QStringLiteral("старое"));
    model.setSearch(QStringLiteral("новое"));
    ASSERT_TRUE(model.isEmpty());
    const QSignalSpy empty(&model, &HistoryModel::emptyChanged);
    model.showAll();
    EXPECT_THAT(rows(), ElementsAre(QStringLiteral("5 января 1: старое")));
    EXPECT_EQ(model.search(), QString());
    EXPECT_EQ(model.filter(), QStringLiteral("Всё"));
    EXPECT_EQ(model.hiddenLabel(), QString());
    EXPECT_EQ(empty.size(), 1);
}

TEST_F(HistoryModelTest, ItemOpened_HasItsTexts) {
    HistoryItem item = dictated(moscow(2026, 11, 20, 18, 30), QStringLiteral("Три простых слова"), {}, 61);
    item.rawText = QStringLiteral("ну три простых слова");
    add(item);
    model.expand(0);
    ASSERT_TRUE(model.hasExpanded());
    EXPECT_EQ(model.expanded(),
              (ExpandedHistory{QStringLiteral("Вчера · 18:30"), QStringLiteral("01:01"), QStringLiteral("3"),
                               QStringLiteral("3 слова"), QStringLiteral("Три простых слова"),
                               QStringLiteral("ну три простых слова")}));
    loop.advance(8h);
    model.setFilter(QStringLiteral("Всё"));
    loop.advance(8h);
    Q_EMIT source.changed();
    EXPECT_EQ(model.expanded().dateLabel, QStringLiteral("20 ноября 18:30"));
    model.collapse();
    EXPECT_FALSE(model.hasExpanded());
}

TEST_F(HistoryModelTest, OpenItem_CopiesItsTexts) {
    HistoryItem item = dictated(moscow(2026, 11, 21, 14), QStringLiteral("чистый"));
    item.rawText = QStringLiteral("сырой");
    add(item);
    model.expand(0);
    model.copyRaw();
    EXPECT_EQ(desktop.clipboard, QStringLiteral("сырой"));
    model.copyCleaned();
    EXPECT_EQ(desktop.clipboard, QStringLiteral("чистый"));
}

TEST_F(HistoryModelTest, Row_CopiesItsWholeCleanedText) {
    const QString text = QStringLiteral("длинный\n").repeated(200);
    add(moscow(2026, 11, 21, 14), text);
    EXPECT_TRUE(model.copyRow(0));
    EXPECT_EQ(desktop.clipboard, text);
    EXPECT_FALSE(model.copyRow(1));
    EXPECT_FALSE(model.copyRow(-1));
}

TEST_F(HistoryModelTest, OpenItemRemoved_ClosesAndIsGone) {
    add(moscow(2026, 11, 21, 13), QStringLiteral("останется"));
    add(moscow(2026, 11, 21, 14), QStringLiteral("лишнее"));
    model.expand(0);
    model.removeExpanded();
    EXPECT_FALSE(model.hasExpanded());
    EXPECT_THAT(rows(), ElementsAre(QStringLiteral("Сегодня 1: останется")));
    EXPECT_EQ(store.items().size(), 1U);
}

TEST_F(HistoryModelTest, OpenItemVanishesFromTheStore_Closes) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("раз"));
    model.expand(0);
    store.remove(store.items()[0].id);
    EXPECT_FALSE(model.hasExpanded());
}

TEST_F(HistoryModelTest, OpenItemHiddenByTheFilter_StaysOpen) {
    add(moscow(2026, 11, 20, 16), QStringLiteral("вчерашнее"));
    model.expand(0);
    loop.advance(2h);
    Q_EMIT source.changed();
    EXPECT_TRUE(model.isEmpty());
    EXPECT_TRUE(model.hasExpanded());
}

TEST_F(HistoryModelTest, SourceGone_ShowsNothing) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("раз"));
    model.expand(0);
    model.setSource(nullptr);
    EXPECT_TRUE(model.isEmpty());
    EXPECT_FALSE(model.hasExpanded());
}
