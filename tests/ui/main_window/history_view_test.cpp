#include "support/wait.h"
#include "window_fixture.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

namespace {

class HistoryViewTest : public WindowFixture {
protected:
    /// Three dictations of today, the newest first: "третья", "вторая", "первая".
    void addThree() {
        add(moscow(2026, 11, 21, 8), QStringLiteral("первая"));
        add(moscow(2026, 11, 21, 9), QStringLiteral("вторая"));
        add(moscow(2026, 11, 21, 10), QStringLiteral("третья"));
    }
    void addMany(int count) {
        for (int i = 0; i < count; ++i)
            add(moscow(2026, 11, 21, 1, i % 60), QStringLiteral("запись %1").arg(i));
    }
    /// All items of the view, those of the rows as well.
    [[nodiscard]] QList<QQuickItem*> items() const {
        (void)host.grab();
        QList<QQuickItem*> items{host.root()};
        for (qsizetype i = 0; i < items.size(); ++i)
            items.append(items[i]->childItems());
        return items;
    }
    /// The keyboard goes to the first row.
    void goToList() {
        host.press(Qt::Key_F, Qt::ControlModifier);
        host.press(Qt::Key_Down);
        ASSERT_EQ(focusedRow(), 0);
    }
    /// The name of what has the keyboard.
    [[nodiscard]] QString focusedName() const { return accessibleName(host.focused()); }
};

} // namespace

TEST_F(HistoryViewTest, Opened_ListsTheLast24HoursByDay) {
    add(moscow(2026, 11, 1), QStringLiteral("старая"));
    add(moscow(2026, 11, 20, 18), QStringLiteral("вчерашняя"));
    add(dictated(moscow(2026, 11, 21, 14), QStringLiteral("сегодняшняя"),
                 QStringLiteral("org.telegram.desktop"), 67));
    show();
    EXPECT_THAT(texts(), IsSupersetOf({QStringLiteral("ИСТОРИЯ"), QStringLiteral("Транскрипции"),
                                       QStringLiteral("Вчера"), QStringLiteral("вчерашняя"),
                                       QStringLiteral("14:00"), QStringLiteral("Telegram"),
                                       QStringLiteral("сегодняшняя"), QStringLiteral("1:07")}));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("старая"))));
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("14:00, Telegram, сегодняшняя"))),
              QAccessible::ListItem);
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("История диктовок"))), QAccessible::List);
}

TEST_F(HistoryViewTest, AllChosen_OlderItemsComeToo) {
    add(moscow(2026, 11, 1), QStringLiteral("старая"));
    addThree();
    show();
    host.click(QStringLiteral("Всё"));
    EXPECT_THAT(texts(), IsSupersetOf({QStringLiteral("1 ноября"), QStringLiteral("старая")}));
}

TEST_F(HistoryViewTest, SearchTyped_NarrowsAndEscapeWidens) {
    addThree();
    show();
    host.press(Qt::Key_F, Qt::ControlModifier);
    host.type(QStringLiteral("ВТОР"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("вторая")));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("третья"))));
    host.press(Qt::Key_Escape);
    EXPECT_THAT(texts(), IsSupersetOf({QStringLiteral("вторая"), QStringLiteral("третья")}));
    EXPECT_EQ(host.find(QStringLiteral("Поиск по истории"))->property("text"), QString());
}

TEST_F(HistoryViewTest, RowClicked_OpensInPlaceOfTheList) {
    HistoryItem item = dictated(moscow(2026, 11, 21, 14), QStringLiteral("Три чистых слова"));
    item.rawText = QStringLiteral("ну три слова");
    add(item);
    show();
    host.click(QStringLiteral("14:00, Velmora, Три чистых слова"));
    EXPECT_THAT(texts(),
                IsSupersetOf({QStringLiteral("Сегодня · 14:00"), QStringLiteral("00:07"), QStringLiteral("3"),
                              QStringLiteral("WHISPER · RAW"), QStringLiteral("Копировать чистый"),
                              QStringLiteral("Копировать сырой"), QStringLiteral("Удалить")}));
    EXPECT_EQ(host.find(QStringLiteral("Чистый текст"))->property("text"),
              QStringLiteral("Три чистых слова"));
    EXPECT_EQ(host.find(QStringLiteral("Сырой текст"))->property("text"), QStringLiteral("ну три слова"));
    EXPECT_FALSE(host.has(QStringLiteral("История диктовок")));
    EXPECT_TRUE(host.has(QStringLiteral("Транскрипции")));
    host.click(QStringLiteral("Закрыть"));
    EXPECT_TRUE(host.has(QStringLiteral("История диктовок")));
}

TEST_F(HistoryViewTest, CopyButtons_CopyAndSaySo) {
    HistoryItem item = dictated(moscow(2026, 11, 21, 14), QStringLiteral("чистый"));
    item.rawText = QStringLiteral("сырой");
    add(item);
    show();
    host.click(QStringLiteral("14:00, Velmora, чистый"));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Скопировано"))));
    host.click(QStringLiteral("Копировать сырой"));
    EXPECT_EQ(desktop.clipboard, QStringLiteral("сырой"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("Скопировано")));
    host.click(QStringLiteral("Копировать чистый"));
    EXPECT_EQ(desktop.clipboard, QStringLiteral("чистый"));
}

TEST_F(HistoryViewTest, DeletePressed_GoesBackToTheListWithoutIt) {
    addThree();
    show();
    host.click(QStringLiteral("09:00, Velmora, вторая"));
    host.click(QStringLiteral("Удалить"));
    EXPECT_EQ(store.items().size(), 2U);
    EXPECT_THAT(texts(), IsSupersetOf({QStringLiteral("первая"), QStringLiteral("третья")}));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("вторая"))));
}

TEST_F(HistoryViewTest, NarrowView_HasShortButtonsThatDoTheSame) {
    addThree();
    host.show("MainWindow", "HistoryView",
              {{QStringLiteral("source"), QVariant::fromValue(model.history())},
               {QStringLiteral("hotkeyLabel"), QStringLiteral("Fn")}},
              {440, 500});
    host.click(QStringLiteral("10:00, Velmora, третья"));
    EXPECT_THAT(texts(),
                IsSupersetOf({QStringLiteral("Чистый"), QStringLiteral("Сырой"), QStringLiteral("Удалить")}));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Копировать чистый"))));
    host.click(QStringLiteral("Чистый"));
    EXPECT_EQ(desktop.clipboard, QStringLiteral("третья"));
    host.window().resize(700, 500);
    EXPECT_TRUE(waitUntil([this] { return host.texts().contains(QStringLiteral("Копировать сырой")); }));
}

TEST_F(HistoryViewTest, Embedded_HasNoHeader) {
    addThree();
    host.show("MainWindow", "HistoryView",
              {{QStringLiteral("source"), QVariant::fromValue(model.history())},
               {QStringLiteral("hotkeyLabel"), QStringLiteral("Fn")},
               {QStringLiteral("embedded"), true}},
              {700, 500});
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Транскрипции"))));
    EXPECT_THAT(texts(), Contains(QStringLiteral("третья")));
}

TEST_F(HistoryViewTest, NothingRecorded_SaysHowToBegin) {
    show();
    EXPECT_THAT(texts(),
                IsSupersetOf({QStringLiteral("Пока ничего не записано"), QStringLiteral("Зажми"),
                              QStringLiteral("Fn"), QStringLiteral("в любом приложении и начни говорить."),
                              QStringLiteral("Fn здесь — правый Ctrl")}));
    EXPECT_FALSE(host.has(QStringLiteral("Показать всё")));
    settings.setHotkey(QStringLiteral("rcmd"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("Right ⌘")));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Fn здесь — правый Ctrl"))));
    add(moscow(2026, 11, 21, 14), QStringLiteral("есть"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("есть")));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Пока ничего не записано"))));
}

TEST_F(HistoryViewTest, AllHidden_SaysWhatHidesAndShowsAllOnDemand) {
    add(moscow(2026, 11, 1), QStringLiteral("старая"));
    add(moscow(2026, 11, 2), QStringLiteral("старая тоже"));
    show();
    EXPECT_THAT(texts(), Contains(QStringLiteral("Фильтр скрывает 2 записи")));
    host.press(Qt::Key_F, Qt::ControlModifier);
    host.type(QStringLiteral("нет такого"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("Фильтр и поиск скрывают 2 записи")));
    host.click(QStringLiteral("Показать всё"));
    EXPECT_THAT(texts(), IsSupersetOf({QStringLiteral("старая"), QStringLiteral("старая тоже")}));
    EXPECT_EQ(host.find(QStringLiteral("Поиск по истории"))->property("text"), QString());
}

TEST_F(HistoryViewTest, Keys_GoThroughTheListAndOpenItsItems) {
    addMany(60);
    show();
    goToList();
    host.press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), 1);
    EXPECT_TRUE(host.focused()->property("visualFocus").toBool());
    host.press(Qt::Key_PageDown);
    const int page = focusedRow();
    EXPECT_GT(page, 4);
    host.press(Qt::Key_End);
    EXPECT_EQ(focusedRow(), 59);
    host.press(Qt::Key_Down);
    EXPECT_EQ(focusedRow(), 59);
    host.press(Qt::Key_PageUp);
    EXPECT_LT(focusedRow(), 59);
    host.press(Qt::Key_Home);
    EXPECT_EQ(focusedRow(), 0);
    host.press(Qt::Key_Up);
    EXPECT_EQ(focusedRow(), 0);
    host.press(Qt::Key_Return);
    EXPECT_TRUE(host.has(QStringLiteral("Копировать чистый")));
}

TEST_F(HistoryViewTest, ItemClosed_TheKeysAreWhereTheyWere) {
    addMany(60);
    show();
    goToList();
    for (int i = 0; i < 30; ++i)
        host.press(Qt::Key_Down);
    const qreal place = host.find(QStringLiteral("История диктовок"))->property("contentY").toReal();
    host.press(Qt::Key_Return);
    ASSERT_TRUE(host.has(QStringLiteral("Копировать чистый")));
    host.press(Qt::Key_Escape);
    EXPECT_EQ(focusedRow(), 30);
    EXPECT_TRUE(host.focused()->property("visualFocus").toBool());
    EXPECT_EQ(host.find(QStringLiteral("История диктовок"))->property("contentY").toReal(), place);
}

TEST_F(HistoryViewTest, Escape_ClosesTheItemThenClearsTheSearch) {
    addThree();
    show();
    host.press(Qt::Key_F, Qt::ControlModifier);
    host.type(QStringLiteral("втор"));
    host.press(Qt::Key_Return);
    host.press(Qt::Key_Return);
    ASSERT_TRUE(host.has(QStringLiteral("Копировать чистый")));
    host.press(Qt::Key_Escape);
    EXPECT_FALSE(host.has(QStringLiteral("Копировать чистый")));
    EXPECT_EQ(host.find(QStringLiteral("Поиск по истории"))->property("text"), QStringLiteral("втор"));
    host.press(Qt::Key_Escape);
    EXPECT_EQ(host.find(QStringLiteral("Поиск по истории"))->property("text"), QString());
}

TEST_F(HistoryViewTest, KeysOfTheWindow_WorkInAnOpenItem) {
    addThree();
    show();
    goToList();
    host.press(Qt::Key_Return);
    ASSERT_EQ(focusedName(), QStringLiteral("Чистый текст"));
    host.press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focusedName(), QStringLiteral("Поиск по истории"));
    host.click(QStringLiteral("Сырой текст"));
    host.press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(nav.screen(), MainScreen::Meetings);
}

TEST_F(HistoryViewTest, CopyKey_CopiesTheRowAndSaysSo) {
    addThree();
    show();
    goToList();
    host.press(Qt::Key_Down);
    host.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("вторая"));
    EXPECT_EQ(texts().count(QStringLiteral("Скопировано")), 1);
}

TEST_F(HistoryViewTest, CopyKeyInAnOpenItem_CopiesItsCleanedText) {
    HistoryItem item = dictated(moscow(2026, 11, 21, 14), QStringLiteral("чистый"));
    item.rawText = QStringLiteral("сырой");
    add(item);
    show();
    goToList();
    host.press(Qt::Key_Return);
    ASSERT_EQ(focusedName(), QStringLiteral("Чистый текст"));
    host.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("чистый"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("Скопировано")));
    const auto timers = host.root()->findChildren<QObject*>(QStringLiteral("successTimer"));
    ASSERT_FALSE(timers.isEmpty());
    for (QObject* timer : timers)
        timer->setProperty("interval", 1);
    EXPECT_TRUE(waitUntil([&] { return !texts().contains(QStringLiteral("Скопировано")); }));
}

TEST_F(HistoryViewTest, CopyKeyWithASelection_CopiesTheSelection) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("слово"));
    show();
    goToList();
    host.press(Qt::Key_Return);
    host.press(Qt::Key_A, Qt::ControlModifier);
    host.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("слово"));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Скопировано")))); // the button was not pressed
}

TEST_F(HistoryViewTest, LongText_ScrollsByKeysToItsEndsOnly) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("строка\n").repeated(200));
    show();
    goToList();
    host.press(Qt::Key_Return);
    QQuickItem* pane = host.find(QStringLiteral("Чистый текст"));
    ASSERT_TRUE(pane);
    const auto place = [pane] {
        for (QQuickItem* child : pane->childItems())
            if (child->inherits("QQuickFlickable"))
                return child->property("contentY").toReal();
        return -1.0;
    };
    host.press(Qt::Key_Up);
    EXPECT_EQ(place(), 0);
    host.press(Qt::Key_Down);
    EXPECT_EQ(place(), 24);
    host.press(Qt::Key_End);
    const qreal end = place();
    EXPECT_GT(end, 1000);
    host.press(Qt::Key_PageDown);
    EXPECT_EQ(place(), end);
    host.press(Qt::Key_Home);
    EXPECT_EQ(place(), 0);
}

TEST_F(HistoryViewTest, Tab_GoesFromTheSidebarOverTheHeaderToTheList) {
    addThree();
    show();
    host.find(QStringLiteral("История"))->forceActiveFocus(Qt::TabFocusReason);
    QStringList stops{focusedName()};
    for (int i = 0; i < 6; ++i) {
        host.press(Qt::Key_Tab);
        stops.append(focusedName());
    }
    EXPECT_THAT(stops, testing::ElementsAre(QStringLiteral("История"), QStringLiteral("Созвоны"),
                                            QStringLiteral("Нужны разрешения"), QStringLiteral("Настройки"),
                                            QStringLiteral("Поиск по истории"), QStringLiteral("Сегодня"),
                                            QStringLiteral("10:00, Velmora, третья")));
    host.press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusedName(), QStringLiteral("Сегодня"));
}

TEST_F(HistoryViewTest, ItemAddedWhileOpen_ComesOnTopInSight) {
    addMany(40);
    show();
    add(moscow(2026, 11, 21, 14, 59), QStringLiteral("только что"));
    ASSERT_THAT(texts(), Contains(QStringLiteral("только что")));
    QQuickItem* list = host.find(QStringLiteral("История диктовок"));
    QQuickItem* row = host.find(QStringLiteral("14:59, Velmora, только что"));
    ASSERT_TRUE(row && list);
    EXPECT_EQ(row->mapToItem(list, QPointF()).y(), 0);
}

TEST_F(HistoryViewTest, ItemAddedWhileScrolledDown_TheListStays) {
    addMany(60);
    show();
    goToList();
    host.press(Qt::Key_End);
    const QString last = focusedName();
    const qreal place = host.focused()->mapToScene({}).y();
    add(moscow(2026, 11, 21, 14, 59), QStringLiteral("только что"));
    EXPECT_EQ(focusedName(), last);
    EXPECT_EQ(focusedRow(), 60);
    EXPECT_EQ(host.focused()->mapToScene({}).y(), place);
}

TEST_F(HistoryViewTest, OpenItemVanishesFromTheStore_TheListIsBack) {
    addThree();
    show();
    host.click(QStringLiteral("10:00, Velmora, третья"));
    store.remove(store.items()[0].id);
    EXPECT_TRUE(host.has(QStringLiteral("История диктовок")));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("третья"))));
}

TEST_F(HistoryViewTest, MarkupInTheText_IsShownAsItStands) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("<b>не жирный</b> &amp;"));
    show();
    EXPECT_THAT(texts(), Contains(QStringLiteral("<b>не жирный</b> &amp;")));
    int drawn = 0;
    for (QQuickItem* item : items()) {
        const bool isText = item->inherits("QQuickText");
        if (isText && item->property("text") == QStringLiteral("<b>не жирный</b> &amp;")) {
            ++drawn;
            EXPECT_EQ(item->property("textFormat").toInt(), Qt::PlainText);
        }
    }
    EXPECT_EQ(drawn, 1);
}

TEST_F(HistoryViewTest, TwoHundredLongTexts_StayWithinTheirRows) {
    const QString samples[] = {
        QStringLiteral("Очень длинная диктовка о разном. ").repeated(150),
        QStringLiteral("ы").repeated(500),
        QStringLiteral("👩‍👩‍👧‍👦🎉").repeated(120),
        QStringLiteral("Строка\n\n").repeated(80),
        QStringLiteral("да"),
    };
    for (int i = 0; i < 200; ++i)
        add(moscow(2026, 11, 21, i / 60, i % 60), samples[i % 5], QStringLiteral("org.gnome.Calendar"));
    show({760, 560});
    goToList();
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home})
        host.press(key);
    int rows = 0;
    for (QQuickItem* row : items()) {
        if (!row->property("preview").isValid() || row->property("rowName").isValid())
            continue;
        ++rows;
        for (QQuickItem* text : row->findChildren<QQuickItem*>()) {
            if (!text->inherits("QQuickText"))
                continue;
            const QRectF inRow = text->mapRectToItem(row, text->boundingRect());
            EXPECT_GE(inRow.left(), 0);
            EXPECT_GE(inRow.top(), 0);
            EXPECT_LE(inRow.right(), row->width());
            EXPECT_LE(inRow.bottom(), row->height());
        }
    }
    EXPECT_GT(rows, 5);
    EXPECT_LT(rows, 40); // those in sight and a few more, not all
}
