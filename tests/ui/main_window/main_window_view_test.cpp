#include "window_fixture.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

namespace {

class MainWindowViewTest : public WindowFixture {
protected:
    void grantAll() {
        rights.granted = {PrivacyRight::Microphone, PrivacyRight::Accessibility,
                          PrivacyRight::InputMonitoring};
        perms.refresh();
    }
};

} // namespace

TEST_F(MainWindowViewTest, SidebarItemClicked_ShowsItsScreen) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("раз"));
    show();
    EXPECT_TRUE(host.has(QStringLiteral("Транскрипции")));
    host.click(QStringLiteral("Созвоны"));
    EXPECT_EQ(nav.screen(), MainScreen::Meetings);
    EXPECT_THAT(texts(), Contains(QStringLiteral("В этой версии записи созвонов ещё нет.")));
    EXPECT_FALSE(host.has(QStringLiteral("Транскрипции")));
    host.click(QStringLiteral("История"));
    EXPECT_EQ(nav.screen(), MainScreen::History);
    EXPECT_TRUE(host.has(QStringLiteral("Транскрипции")));
}

TEST_F(MainWindowViewTest, ScreenLeftAndBack_TheHistoryStartsAfresh) {
    add(moscow(2026, 11, 1), QStringLiteral("старая"));
    show();
    host.click(QStringLiteral("Всё"));
    ASSERT_THAT(texts(), Contains(QStringLiteral("старая")));
    host.press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(nav.screen(), MainScreen::Meetings);
    host.press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(nav.screen(), MainScreen::History);
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("старая"))));
}

TEST_F(MainWindowViewTest, PermissionRow_FollowsTheRights) {
    show();
    EXPECT_TRUE(host.has(QStringLiteral("Нужны разрешения")));
    grantAll();
    EXPECT_TRUE(host.has(QStringLiteral("Всё подключено")));
    rights.granted.erase(PrivacyRight::InputMonitoring);
    perms.refresh();
    host.click(QStringLiteral("Нужны разрешения"));
    EXPECT_TRUE(nav.showSettingsSheet());
    EXPECT_EQ(nav.settingsTab(), QStringLiteral("permissions"));
}

TEST_F(MainWindowViewTest, SettingsRow_OpensTheFirstTab) {
    nav.setSettingsTab(QStringLiteral("about"));
    show();
    host.click(QStringLiteral("Настройки"));
    EXPECT_TRUE(nav.showSettingsSheet());
    EXPECT_EQ(nav.settingsTab(), QStringLiteral("general"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("Акцентный цвет")));
}

TEST_F(MainWindowViewTest, SettingsSheet_ClosesByKeyByButtonAndByAClickBesideIt) {
    show();
    host.press(Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_TRUE(nav.showSettingsSheet());
    host.press(Qt::Key_Escape);
    EXPECT_FALSE(nav.showSettingsSheet());

    nav.openSettings();
    host.click(QStringLiteral("Закрыть"));
    EXPECT_FALSE(nav.showSettingsSheet());

    nav.openSettings();
    QTest::mouseClick(&host.window(), Qt::LeftButton, {}, QPoint(940, 600));
    EXPECT_FALSE(nav.showSettingsSheet());
}

TEST_F(MainWindowViewTest, SettingsSheet_KeepsTheKeysAndGivesThemBack) {
    add(moscow(2026, 11, 21, 14), QStringLiteral("раз"));
    show();
    host.press(Qt::Key_F, Qt::ControlModifier);
    host.type(QStringLiteral("р"));
    nav.openSettings(QStringLiteral("permissions"));
    QStringList stops{accessibleName(host.focused())};
    for (int i = 0; i < 7; ++i) {
        host.press(Qt::Key_Tab);
        stops.append(accessibleName(host.focused()));
    }
    EXPECT_THAT(stops, ElementsAre(QStringLiteral("Разрешения"), QStringLiteral("Разрешить"),
                                   QStringLiteral("Разрешить"), QStringLiteral("Разрешить"),
                                   QStringLiteral("Перезапустить"), QStringLiteral("Войти"),
                                   QStringLiteral("Закрыть"), QStringLiteral("Разрешения")));
    host.press(Qt::Key_Escape);
    EXPECT_EQ(accessibleName(host.focused()), QStringLiteral("Поиск по истории"));
    EXPECT_EQ(host.focused()->property("text"), QStringLiteral("р"));
}

TEST_F(MainWindowViewTest, TabChangedWhileTheSheetIsShown_ShowsTheOther) {
    show();
    nav.openSettings(QStringLiteral("about"));
    ASSERT_THAT(texts(), Contains(QStringLiteral("Версия 1.2.0")));
    nav.openSettings(QStringLiteral("permissions"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("Микрофон")));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Версия 1.2.0"))));
}

TEST_F(MainWindowViewTest, SettingsOfATabToCome_OpenWithoutContent) {
    show();
    nav.openSettings(QStringLiteral("integrations"));
    EXPECT_TRUE(host.has(QStringLiteral("Настройки")));
    EXPECT_THAT(texts(), IsSupersetOf({QStringLiteral("Общие"), QStringLiteral("О программе")}));
    EXPECT_THAT(texts(), Not(Contains(QStringLiteral("Акцентный цвет"))));
    host.press(Qt::Key_Escape);
    EXPECT_FALSE(nav.showSettingsSheet());
}

TEST_F(MainWindowViewTest, RightGrantedOrSignedInWhileTheSheetIsShown_ShowsInBoth) {
    show();
    nav.openSettings(QStringLiteral("permissions"));
    rights.granted = {PrivacyRight::Microphone, PrivacyRight::Accessibility, PrivacyRight::InputMonitoring};
    model.refresh();
    EXPECT_EQ(texts().count(QStringLiteral("Разрешено")), 3);
    EXPECT_THAT(texts(), Contains(QStringLiteral("Всё подключено")));
    stage.signIn("anna@example.org");
    EXPECT_EQ(texts().count(QStringLiteral("anna@example.org")), 2);
}

TEST_F(MainWindowViewTest, SignedInWithNothingKnown_TheSidebarAsksForTheAccount) {
    stage.signIn();
    show();
    ASSERT_EQ(stage.transport.count(), 1U);
    stage.transport.last().reply(200, SettingsStage::account("anna@example.org"));
    EXPECT_THAT(texts(), Contains(QStringLiteral("anna@example.org")));
}
