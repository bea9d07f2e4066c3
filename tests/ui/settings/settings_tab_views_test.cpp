#include "settings_fixture.h"
#include "support/wait.h"

#include <QColor>

using namespace velmora;
using namespace velmora::test;
using namespace std::chrono_literals;
using testing::AllOf;
using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

namespace {

class SettingsGeneralViewTest : public SettingsFixture {};
class SettingsAIViewTest : public SettingsFixture {};
class SettingsPermissionsViewTest : public SettingsFixture {};
class SettingsAboutViewTest : public SettingsFixture {};

} // namespace

TEST_F(SettingsGeneralViewTest, Rows_SayWhatTheyAreFor) {
    showSheet(QStringLiteral("general"));
    EXPECT_THAT(
        host.texts(),
        IsSupersetOf({QStringLiteral("Акцентный цвет"), QStringLiteral("Запускать при входе"),
                      QStringLiteral("Velmora стартует и сворачивается в строку меню"),
                      QStringLiteral("Индикатор записи"), QStringLiteral("Показывать капсулу под notch"),
                      QStringLiteral("Звук готовности"), QStringLiteral("Когда текст вставлен")}));
}

TEST_F(SettingsGeneralViewTest, EachControl_StoresAtOnce) {
    showSheet(QStringLiteral("general"));
    host.click(QStringLiteral("Teal"));
    host.click(QStringLiteral("Запускать при входе"));
    host.click(QStringLiteral("Индикатор записи"));
    host.click(QStringLiteral("Системный"));
    EXPECT_EQ(defaults.string(QStringLiteral("themeColor")), QStringLiteral("teal"));
    EXPECT_EQ(defaults.boolean(QStringLiteral("launchAtLogin")), true);
    EXPECT_EQ(defaults.boolean(QStringLiteral("showHUD")), false);
    EXPECT_EQ(defaults.string(QStringLiteral("readySound")), QStringLiteral("Системный"));
}

TEST_F(SettingsGeneralViewTest, ByKeyboard_EachControlStoresToo) {
    showSheet(QStringLiteral("general"));
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Left);
    EXPECT_EQ(settings.themeColor(), QStringLiteral("teal"));
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Space);
    EXPECT_TRUE(settings.launchAtLogin());
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Return);
    EXPECT_FALSE(settings.showHUD());
    host.press(Qt::Key_Tab);
    host.press(Qt::Key_Left);
    EXPECT_EQ(settings.readySound(), QStringLiteral("Нет"));
}

TEST_F(SettingsGeneralViewTest, ChangeByAnotherProcess_ShowsEvenAfterOnesOwn) {
    showSheet(QStringLiteral("general"));
    QQuickItem* const launch = host.find(QStringLiteral("Запускать при входе"));
    host.click(launch);
    host.click(QStringLiteral("Teal"));
    ASSERT_TRUE(isChecked(launch));
    UserDefaults other(host.folder.filePath(QStringLiteral("defaults.json")));
    other.set(QStringLiteral("themeColor"), QStringLiteral("lime"));
    other.set(QStringLiteral("readySound"), QStringLiteral("Нет"));
    other.set(QStringLiteral("launchAtLogin"), false);
    ASSERT_TRUE(waitUntil([this] { return !settings.launchAtLogin(); }));
    EXPECT_FALSE(isChecked(launch));
    EXPECT_TRUE(isChecked(host.find(QStringLiteral("Lime"))));
    EXPECT_FALSE(isChecked(host.find(QStringLiteral("Teal"))));
    EXPECT_TRUE(isChecked(host.find(QStringLiteral("Нет"))));
}

TEST_F(SettingsGeneralViewTest, AccentChosen_ColoursTheSheetAtOnce) {
    showSheet(QStringLiteral("general"));
    QQuickItem* const toggle = host.find(QStringLiteral("Индикатор записи"));
    const QPointF spot = toggle->mapToScene(QPointF(10, 11)); // left of its knob
    const auto seen = [&] { return host.grab().pixelColor(spot.toPoint()); };
    ASSERT_EQ(seen(), QColor(0xA8CC5A));
    host.click(QStringLiteral("Teal"));
    EXPECT_TRUE(waitUntil([&] { return seen() == QColor(0x80CBC4); }));
}

TEST_F(SettingsGeneralViewTest, ChosenSwatch_IsMarkedByMoreThanItsColour) {
    showSheet(QStringLiteral("general"));
    const auto hasCheck = [this](const char* name) {
        for (QQuickItem* item : host.find(QLatin1String(name))->findChildren<QQuickItem*>())
            if (item->inherits("velmora::VIconView") && item->isVisible())
                return true;
        return false;
    };
    EXPECT_TRUE(hasCheck("Lime"));
    EXPECT_FALSE(hasCheck("Teal"));
    host.click(QStringLiteral("Teal"));
    EXPECT_TRUE(hasCheck("Teal"));
    EXPECT_FALSE(hasCheck("Lime"));
}

TEST_F(SettingsAIViewTest, SignedOut_ShowsOnlyTheSignInLine) {
    showSheet(QStringLiteral("ai"));
    EXPECT_THAT(
        host.texts(),
        AllOf(Contains(QStringLiteral(
                  "Войди в аккаунт во вкладке «Общие», чтобы настроить язык транскрипции и очистку.")),
              Not(Contains(QStringLiteral("Язык транскрипции"))),
              Not(Contains(QStringLiteral("Аудио не хранится"))),
              Not(Contains(QStringLiteral("Загружаем настройки…")))));
}

TEST_F(SettingsAIViewTest, PreferencesOnTheirWay_SaysSoUntilTheyAreThere) {
    stage.signIn();
    showSheet(QStringLiteral("ai"));
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("Загружаем настройки…")));
    stage.transport.last().reply(200, SettingsStage::account("anna@example.org"));
    EXPECT_THAT(
        host.texts(),
        IsSupersetOf({QStringLiteral("Язык транскрипции"), QStringLiteral("Очищать текст"),
                      QStringLiteral("Velmora приведёт текст в порядок перед вставкой. Задержка +1–2 с."),
                      QStringLiteral("Режим разработчика"),
                      QStringLiteral("Сохраняет английские термины (React, hooks, API) без перевода"),
                      QStringLiteral("Аудио не хранится")}));
    EXPECT_THAT(host.texts(), Not(Contains(QStringLiteral("Загружаем настройки…"))));
}

TEST_F(SettingsAIViewTest, QuickChanges_ShowAtOnceAndAreSentAsOne) {
    stage.signIn("anna@example.org");
    showSheet(QStringLiteral("ai"));
    const std::size_t before = stage.transport.count();
    host.click(QStringLiteral("English"));
    host.click(QStringLiteral("Авто"));
    host.click(QStringLiteral("Очищать текст"));
    host.click(QStringLiteral("Режим разработчика"));
    EXPECT_TRUE(isChecked(host.find(QStringLiteral("Авто"))));
    EXPECT_FALSE(isChecked(host.find(QStringLiteral("Очищать текст"))));
    EXPECT_TRUE(isChecked(host.find(QStringLiteral("Режим разработчика"))));
    EXPECT_EQ(stage.transport.count(), before);
    loop.advance(500ms);
    ASSERT_EQ(stage.transport.count(), before + 1);
    EXPECT_EQ(lastBody(), R"({"cleanupEnabled":false,"devModeEnabled":true,"transcribeLanguage":"auto"})");
}

TEST_F(SettingsAIViewTest, AnswerOfTheServer_Wins) {
    stage.signIn("anna@example.org");
    showSheet(QStringLiteral("ai"));
    host.click(QStringLiteral("English"));
    loop.advance(500ms);
    stage.transport.last().reply(
        200, R"({"transcribeLanguage":"auto","cleanupEnabled":false,"devModeEnabled":true})");
    EXPECT_TRUE(isChecked(host.find(QStringLiteral("Авто"))));
    EXPECT_FALSE(isChecked(host.find(QStringLiteral("Очищать текст"))));
    EXPECT_TRUE(isChecked(host.find(QStringLiteral("Режим разработчика"))));
}

TEST_F(SettingsPermissionsViewTest, Rights_AreShownAndAskedForAsTheyChange) {
    stage.rights.granted = {PrivacyRight::Accessibility};
    stage.perms.refresh();
    showSheet(QStringLiteral("permissions"));
    EXPECT_THAT(host.texts(),
                IsSupersetOf({QStringLiteral("Микрофон"), QStringLiteral("Input Monitoring"),
                              QStringLiteral("Accessibility"),
                              QStringLiteral("Velmora нужны три разрешения. Без них горячая клавиша или "
                                             "вставка не сработают.")}));
    EXPECT_EQ(host.texts().count(QStringLiteral("Разрешить")), 2);
    EXPECT_EQ(host.texts().count(QStringLiteral("Разрешено")), 1);
    stage.rights.grantsRequests = true;
    host.click(QStringLiteral("Разрешить"));
    host.click(QStringLiteral("Разрешить"));
    EXPECT_THAT(stage.rights.requests,
                testing::ElementsAre(PrivacyRight::Microphone, PrivacyRight::InputMonitoring));
    EXPECT_EQ(host.texts().count(QStringLiteral("Разрешено")), 3);
    EXPECT_THAT(host.texts(),
                Contains(QStringLiteral("Velmora готов к работе — все три разрешения предоставлены.")));
    host.click(QStringLiteral("Открыть"));
    EXPECT_THAT(stage.rights.openedSettings, testing::ElementsAre(PrivacyRight::Microphone));
}

TEST_F(SettingsPermissionsViewTest, Relaunch_SaysSoAndIsNotPressedTwice) {
    showSheet(QStringLiteral("permissions"));
    EXPECT_THAT(host.texts(),
                IsSupersetOf({QStringLiteral("Только что выдал разрешение?"),
                              QStringLiteral("macOS иногда применяет новые разрешения только после "
                                             "перезапуска приложения.")}));
    host.click(QStringLiteral("Перезапустить"));
    EXPECT_EQ(stage.relaunches, 1);
    host.click(QStringLiteral("Перезапускаем…"));
    EXPECT_EQ(stage.relaunches, 1);
}

TEST_F(SettingsAboutViewTest, Links_LeadToTheSite) {
    showSheet(QStringLiteral("about"));
    EXPECT_THAT(host.texts(), IsSupersetOf({QStringLiteral("Голос → чистый текст для нейросетей"),
                                            QStringLiteral("Версия 1.2.0")}));
    host.click(QStringLiteral("Что нового"));
    host.click(QStringLiteral("Лицензия"));
    EXPECT_THAT(workspace.opened,
                testing::ElementsAre(QUrl(QStringLiteral("https://site.test/news")),
                                     QUrl(QStringLiteral("https://site.test/legal/license"))));
}
