#include "settings_fixture.h"
#include "ui/settings/settings_tabs.h"

#include <QSignalSpy>
#include <QTest>

using namespace velmora;
using namespace velmora::test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSubsetOf;
using testing::IsSupersetOf;
using testing::Not;

namespace {

class SettingsSheetTest : public SettingsFixture {
protected:
    [[nodiscard]] QQuickItem* card() const { return host.find(QStringLiteral("settingsCard")); }
    [[nodiscard]] QString tab() const { return stage.nav.settingsTab(); }
    /// Where Tab leads, one name a press.
    [[nodiscard]] QStringList stops(int count) const {
        QStringList names;
        for (int i = 0; i < count; ++i) {
            host.press(Qt::Key_Tab);
            names.append(focusedName());
        }
        return names;
    }
    [[nodiscard]] QStringList chosenTabs() const {
        QStringList chosen;
        for (const VPillNavItem& item : settingsTabs())
            if (isChecked(host.find(item.label)))
                chosen.append(item.id);
        return chosen;
    }
};

const QStringList tabLabels{QStringLiteral("Общие"), QStringLiteral("Запись"), QStringLiteral("Обработка"),
                            QStringLiteral("Разрешения"), QStringLiteral("О программе")};

} // namespace

TEST_F(SettingsSheetTest, Card_IsOfItsSizeAndInTheMiddle) {
    showSheet(QStringLiteral("general"));
    EXPECT_EQ(card()->size(), QSizeF(760, 600));
    EXPECT_EQ(card()->position(), QPointF(110, 40));
}

TEST_F(SettingsSheetTest, SmallWindow_TheCardAndItsTabsStayInside) {
    showSheet(QStringLiteral("general"), {760, 560});
    const QRectF place(card()->position(), card()->size());
    EXPECT_TRUE(QRectF(0, 0, 760, 560).contains(place));
    EXPECT_EQ(place.center(), QPointF(380, 280));
    const double line = host.find(tabLabels.front())->mapToScene(QPointF()).y();
    for (const QString& label : tabLabels)
        EXPECT_EQ(host.find(label)->mapToScene(QPointF()).y(), line) << label.toStdString();
}

TEST_F(SettingsSheetTest, EachTab_IsHighlightedAndShowsItsOwn) {
    struct Case {
        const char* tab;
        const char* text;
    };
    showSheet(QStringLiteral("general"));
    for (const Case& c : {
             Case{"general", "Запускать при входе"},
             Case{"ai", "Войди в аккаунт во вкладке «Общие», чтобы настроить язык транскрипции и очистку."},
             Case{"permissions", "Только что выдал разрешение?"},
             Case{"about", "Голос → чистый текст для нейросетей"},
         }) {
        stage.nav.openSettings(QLatin1String(c.tab));
        EXPECT_THAT(chosenTabs(), ElementsAre(QLatin1String(c.tab)));
        EXPECT_THAT(host.texts(), Contains(QString::fromUtf8(c.text)));
    }
    EXPECT_THAT(host.texts(), Not(Contains(QStringLiteral("Запускать при входе"))));
}

TEST_F(SettingsSheetTest, UnknownTab_HighlightsNoneAndShowsNoContent) {
    for (const char* unknown : {"integrations", "storage", "updates", "General", ""}) {
        showSheet(QLatin1String(unknown));
        EXPECT_THAT(chosenTabs(), ElementsAre()) << unknown;
        QStringList allowed = tabLabels;
        allowed << QStringLiteral("Не подключён") << QStringLiteral("Войти");
        EXPECT_THAT(host.texts(), IsSubsetOf(allowed)) << unknown;
        EXPECT_EQ(focusedName(), tabLabels.front()); // from there on by key
    }
}

TEST_F(SettingsSheetTest, PillClicked_GoesToItsTab) {
    showSheet(QStringLiteral("general"));
    host.click(QStringLiteral("О программе"));
    EXPECT_EQ(tab(), QStringLiteral("about"));
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("Версия 1.2.0")));
}

TEST_F(SettingsSheetTest, Opened_TheTabHasTheKeyboardAndArrowsGoOn) {
    showSheet(QStringLiteral("ai"));
    EXPECT_EQ(focusedName(), QStringLiteral("Обработка"));
    host.press(Qt::Key_Right);
    EXPECT_EQ(tab(), QStringLiteral("permissions"));
    EXPECT_EQ(focusedName(), QStringLiteral("Разрешения"));
    host.press(Qt::Key_Right);
    host.press(Qt::Key_Right);
    EXPECT_EQ(tab(), QStringLiteral("about"));
    host.press(Qt::Key_Left);
    EXPECT_EQ(tab(), QStringLiteral("permissions"));
}

TEST_F(SettingsSheetTest, ControlWithTabOrPage_GoesThroughTheTabsFromAnywhere) {
    showSheet(QStringLiteral("permissions"));
    host.press(Qt::Key_Tab); // into the content, which goes with its tab
    host.press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(tab(), QStringLiteral("about"));
    EXPECT_EQ(focusedName(), QStringLiteral("О программе"));
    host.press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tab(), QStringLiteral("general"));
    host.press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tab(), QStringLiteral("about"));
    host.press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(tab(), QStringLiteral("permissions"));
    EXPECT_EQ(focusedName(), QStringLiteral("Разрешения"));
}

TEST_F(SettingsSheetTest, TabKey_StopsAtEveryControlAndStaysInside) {
    showSheet(QStringLiteral("general"));
    EXPECT_THAT(stops(7),
                ElementsAre(QStringLiteral("Lime"), QStringLiteral("Запускать при входе"),
                            QStringLiteral("Индикатор записи"), QStringLiteral("Тихий"),
                            QStringLiteral("Войти"), QStringLiteral("Закрыть"), QStringLiteral("Общие")));
}

TEST_F(SettingsSheetTest, ClosingKeyButtonAndGround_Ask) {
    showSheet(QStringLiteral("general"));
    QSignalSpy closed(host.root(), SIGNAL(closed()));
    host.press(Qt::Key_Escape);
    EXPECT_EQ(closed.size(), 1);
    host.click(QStringLiteral("Закрыть"));
    EXPECT_EQ(closed.size(), 2);
    QTest::mouseClick(&host.window(), Qt::LeftButton, {}, QPoint(50, 300));
    EXPECT_EQ(closed.size(), 3);
    QTest::mouseClick(&host.window(), Qt::LeftButton, {}, QPoint(490, 600)); // on the card
    EXPECT_EQ(closed.size(), 3);
}

TEST_F(SettingsSheetTest, TabThatGoesWithTheKeyboardInside_LeavesEscapeAlive) {
    showSheet(QStringLiteral("permissions"));
    host.press(Qt::Key_Tab);
    ASSERT_EQ(focusedName(), QStringLiteral("Разрешить"));
    stage.nav.openSettings(QStringLiteral("about")); // by another part of the program
    QSignalSpy closed(host.root(), SIGNAL(closed()));
    host.press(Qt::Key_Escape);
    EXPECT_EQ(closed.size(), 1);
}

TEST_F(SettingsSheetTest, MoreThanFits_ScrollsToWhatHasTheKeyboardAndByPage) {
    showSheet(QStringLiteral("permissions"), {760, 340});
    const QRectF shown(card()->position(), card()->size());
    const auto place = [this](const char* name) {
        QQuickItem* item = host.find(QString::fromUtf8(name));
        return item->mapRectToScene(item->boundingRect());
    };
    EXPECT_FALSE(shown.contains(place("Перезапустить")));
    EXPECT_THAT(stops(4), Contains(QStringLiteral("Перезапустить")));
    EXPECT_TRUE(shown.contains(place("Перезапустить")));
    host.press(Qt::Key_Home);
    EXPECT_FALSE(shown.contains(place("Перезапустить")));
    host.press(Qt::Key_End);
    EXPECT_TRUE(shown.contains(place("Перезапустить")));
    host.press(Qt::Key_PageUp);
    EXPECT_FALSE(shown.contains(place("Перезапустить")));
}

TEST_F(SettingsSheetTest, AnotherTab_BeginsAtItsTop) {
    showSheet(QStringLiteral("permissions"), {760, 340});
    (void)stops(4);
    QQuickItem* const content = host.find(QStringLiteral("settingsScroll"));
    ASSERT_GT(content->property("contentY").toReal(), 0);
    stage.nav.setSettingsTab(QStringLiteral("about"));
    EXPECT_EQ(content->property("contentY").toReal(), 0);
}

TEST_F(SettingsSheetTest, ForThoseWhoListen_EverythingHasItsRoleAndName) {
    showSheet(QStringLiteral("general"));
    EXPECT_EQ(accessibleRole(host.root()), QAccessible::Dialog);
    EXPECT_EQ(accessibleName(host.root()), QStringLiteral("Настройки"));
    EXPECT_TRUE(host.has(QStringLiteral("Разделы настроек")));
    EXPECT_TRUE(host.has(QStringLiteral("Учётная запись: Не подключён")));
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("Акцентный цвет"))), QAccessible::Grouping);
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("Teal"))), QAccessible::RadioButton);
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("Запускать при входе"))), QAccessible::CheckBox);
    EXPECT_EQ(accessibleRole(host.find(QStringLiteral("Звук готовности"))), QAccessible::Grouping);

    stage.nav.setSettingsTab(QStringLiteral("permissions"));
    EXPECT_TRUE(host.has(QStringLiteral("Input Monitoring: Нет доступа")));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(host.find(QStringLiteral("Разрешить")))
                  ->text(QAccessible::Description),
              QStringLiteral("Микрофон"));
}

TEST_F(SettingsSheetTest, SignedOut_OffersToSignInAndThenShowsWhoItIs) {
    showSheet(QStringLiteral("general"));
    EXPECT_THAT(host.texts(), IsSupersetOf({QStringLiteral("Не подключён"), QStringLiteral("Войти")}));
    host.click(QStringLiteral("Войти"));
    ASSERT_EQ(workspace.opened.size(), 1);
    EXPECT_EQ(workspace.opened.front().path(), QStringLiteral("/auth"));

    stage.signIn("anna@example.org");
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("anna@example.org")));
    EXPECT_FALSE(host.has(QStringLiteral("Войти")));
    host.click(QStringLiteral("Аккаунт"));
    EXPECT_EQ(workspace.opened.back(), QUrl(QStringLiteral("https://site.test/account")));
}

TEST_F(SettingsSheetTest, SignedInWithNothingKnown_AsksForTheAccountOnce) {
    stage.signIn();
    showSheet(QStringLiteral("ai"));
    EXPECT_EQ(stage.transport.count(), 1U);
    stage.transport.last().reply(200, SettingsStage::account("anna@example.org"));
    EXPECT_THAT(host.texts(),
                IsSupersetOf({QStringLiteral("anna@example.org"), QStringLiteral("Язык транскрипции")}));
}

TEST_F(SettingsSheetTest, AccountNotRead_TheTabThatNeedsItTriesAgain) {
    stage.signIn();
    showSheet(QStringLiteral("general"));
    ASSERT_EQ(stage.transport.count(), 1U);
    stage.transport.last().fail(QStringLiteral("offline"));
    stage.nav.setSettingsTab(QStringLiteral("ai"));
    EXPECT_EQ(stage.transport.count(), 2U);
}

TEST_F(SettingsSheetTest, LongAddress_IsCutInTheMiddleBesideItsButton) {
    stage.signIn(QByteArray(120, 'a') + "@example.org");
    showSheet(QStringLiteral("general"), {760, 560});
    QQuickItem* const button = host.find(QStringLiteral("Аккаунт"));
    QQuickItem* const name = host.find(QStringLiteral("Учётная запись: ") + QString(120, QLatin1Char('a')) +
                                       QStringLiteral("@example.org"));
    EXPECT_TRUE(name->property("truncated").toBool());
    EXPECT_LT(name->mapToScene(QPointF(name->width(), 0)).x(), button->mapToScene(QPointF()).x());
}
