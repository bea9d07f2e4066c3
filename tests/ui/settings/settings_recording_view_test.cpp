#include "recording_settings_fixture.h"
#include "support/ui/view_host.h"
#include "support/wait.h"
#include "ui/settings/level_bar_row.h"

#include <QTest>

using namespace velmora;
using namespace velmora::test;
using testing::Contains;
using testing::Not;

namespace {

class SettingsRecordingViewTest : public RecordingSettingsTest {
protected:
    void show() {
        host.show("Settings", "SettingsRecordingView",
                  {{QStringLiteral("model"), QVariant::fromValue(&model)}});
    }
    /// The tab on a page whose Esc is somebody else's, as in the sheet.
    void showOnPage() {
        host.showSource("import QtQuick\nimport Velmora.Settings\n"
                        "Item { id: page; required property RecordingSettingsModel model;"
                        " property int escapes: 0; property bool opened: true;"
                        " implicitWidth: 660; implicitHeight: 950\n"
                        "Shortcut { sequence: 'Escape'; onActivated: page.escapes++ }\n"
                        "Loader { anchors.fill: parent; focus: true; active: page.opened;"
                        " sourceComponent: SettingsRecordingView { model: page.model } } }",
                        {{QStringLiteral("model"), QVariant::fromValue(&model)}});
    }
    [[nodiscard]] int escapes() const { return host.root()->property("escapes").toInt(); }
    [[nodiscard]] bool becomesLive(bool live) const {
        return waitUntil([&] { return stage.levelEngine.running == live; });
    }
    [[nodiscard]] QString value(const char* name) const {
        return host.find(QString::fromUtf8(name))->property("displayText").toString();
    }
    [[nodiscard]] bool isChecked(const char* name) const {
        return QAccessible::queryAccessibleInterface(host.find(QString::fromUtf8(name)))->state().checked;
    }
    void click(const char* name) const { host.click(QString::fromUtf8(name)); }

    ViewHost host;
};

} // namespace

TEST_F(SettingsRecordingViewTest, EachControl_WritesAtOnce) {
    show();
    click("Right ⌘");
    EXPECT_EQ(settings.hotkey(), QStringLiteral("rcmd"));
    click("Toggle");
    EXPECT_EQ(settings.mode(), QStringLiteral("toggle"));
    click("Мин. длительность");
    loop.advance(std::chrono::milliseconds(20));
    EXPECT_NEAR(settings.minDuration(), 1.05, 0.051);
    click("Показывать индикатор");
    EXPECT_FALSE(settings.showHUD());
    click("Волна");
    EXPECT_EQ(settings.hudStyle(), QStringLiteral("wave"));
    click("Большой");
    EXPECT_EQ(settings.hudSize(), QStringLiteral("large"));
    click("Сверху");
    EXPECT_EQ(settings.hudPosition(), QStringLiteral("top"));
    click("Минимальный вид");
    EXPECT_FALSE(settings.hudMinimal());
    click("Подсказывать запись при созвоне");
    EXPECT_FALSE(settings.callDetectionEnabled());
}

TEST_F(SettingsRecordingViewTest, DefaultClicked_IsStoredAndMovesTheCapsuleThere) {
    show();
    EXPECT_EQ(model.capsuleY(), -8);
    click("Снизу");
    EXPECT_EQ(defaults.string(QStringLiteral("hudPosition")), QStringLiteral("bottom"));
    EXPECT_GT(model.capsuleY(), 0);
}

TEST_F(SettingsRecordingViewTest, ChangedElsewhere_IsShown) {
    show();
    useCustomHotkey("⌘ P");
    EXPECT_TRUE(host.has(QStringLiteral("⌘ P")));
    EXPECT_FALSE(isChecked("Fn"));
    settings.setMode(QStringLiteral("toggle"));
    EXPECT_TRUE(isChecked("Toggle"));
    settings.setMicUniqueID(QStringLiteral("usb"));
    EXPECT_EQ(value("Микрофон"), QStringLiteral("USB"));
    settings.setMinDuration(1.3);
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("1,3 с")));
    EXPECT_EQ(host.find(QStringLiteral("Мин. длительность"))->property("value"), 1.3);
    settings.setHudStyle(QStringLiteral("dots"));
    EXPECT_TRUE(isChecked("Точки"));
    settings.setHudSize(QStringLiteral("large"));
    EXPECT_TRUE(isChecked("Большой"));
    settings.setHudPosition(QStringLiteral("top"));
    EXPECT_TRUE(isChecked("Сверху"));
    settings.setShowHUD(false);
    settings.setHudMinimal(false);
    settings.setCallDetectionEnabled(false);
    for (const char* toggle : {"Показывать индикатор", "Минимальный вид", "Подсказывать запись при созвоне"})
        EXPECT_FALSE(isChecked(toggle)) << toggle;
}

TEST_F(SettingsRecordingViewTest, ChangedByHandAndThenElsewhere_IsStillShown) {
    show();
    click("Показывать индикатор");
    click("Toggle");
    host.find(QStringLiteral("Мин. длительность"))->forceActiveFocus(Qt::TabFocusReason);
    host.press(Qt::Key_Right);
    loop.advance(std::chrono::milliseconds(20));
    EXPECT_EQ(settings.minDuration(), 0.5);
    settings.setShowHUD(true);
    settings.setMode(QStringLiteral("push-to-talk"));
    settings.setMinDuration(1.7);
    EXPECT_TRUE(isChecked("Показывать индикатор"));
    EXPECT_TRUE(isChecked("Push-to-talk"));
    EXPECT_EQ(host.find(QStringLiteral("Мин. длительность"))->property("value"), 1.7);
}

TEST_F(SettingsRecordingViewTest, StoredDurationOutOfRange_IsShownAtTheEndAndStays) {
    settings.setMinDuration(30);
    show();
    EXPECT_EQ(host.find(QStringLiteral("Мин. длительность"))->property("visualPosition"), 1);
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("2,0 с")));
    EXPECT_EQ(settings.minDuration(), 30);
}

TEST_F(SettingsRecordingViewTest, KeyboardAlone_ReachesAndChangesEverything) {
    show();
    struct Stop {
        const char* name;
        std::vector<Qt::Key> keys;
    };
    for (const Stop& stop : {
             Stop{"Изменить", {Qt::Key_Space}},
             Stop{"Fn", {Qt::Key_Right, Qt::Key_Left}},
             Stop{"Вместо Fn", {Qt::Key_Down}},
             Stop{"Push-to-talk", {Qt::Key_Right}},
             Stop{"Микрофон", {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return}},
             Stop{"Мин. длительность", {Qt::Key_Left}},
             Stop{"Показывать индикатор", {Qt::Key_Space}},
             Stop{"Полосы", {Qt::Key_Right}},
             Stop{"Малый", {Qt::Key_Right}},
             Stop{"Снизу", {Qt::Key_Left}},
             Stop{"Минимальный вид", {Qt::Key_Return}},
             Stop{"Подсказывать запись при созвоне", {Qt::Key_Space}},
         }) {
        host.press(Qt::Key_Tab);
        ASSERT_EQ(accessibleName(host.focused()).toStdString(), stop.name);
        EXPECT_TRUE(host.focused()->property("visualFocus").toBool()) << stop.name;
        for (const Qt::Key key : stop.keys)
            host.press(key);
        if (hotkey.isCapturing())
            stage.keys.keyDown(keyEscape);
    }
    EXPECT_EQ(settings.hotkey(), QStringLiteral("fn"));
    EXPECT_EQ(settings.fnStandIn(), QStringLiteral("ralt"));
    EXPECT_EQ(settings.mode(), QStringLiteral("toggle"));
    EXPECT_EQ(settings.micUniqueID(), QStringLiteral("usb"));
    loop.advance(std::chrono::milliseconds(20));
    EXPECT_EQ(settings.minDuration(), 0.3);
    EXPECT_FALSE(settings.showHUD());
    EXPECT_EQ(settings.hudStyle(), QStringLiteral("wave"));
    EXPECT_EQ(settings.hudSize(), QStringLiteral("medium"));
    EXPECT_EQ(settings.hudPosition(), QStringLiteral("top"));
    EXPECT_FALSE(settings.hudMinimal());
    EXPECT_FALSE(settings.callDetectionEnabled());
}

TEST_F(SettingsRecordingViewTest, Microphone_IsChosenFromWhatIsPluggedIn) {
    show();
    host.find(QStringLiteral("Микрофон"))->forceActiveFocus(Qt::TabFocusReason);
    stage.inputs.setInputs({{QStringLiteral("usb"), QStringLiteral("USB")},
                            {QStringLiteral("headset"), QStringLiteral("Гарнитура")}});
    EXPECT_EQ(value("Микрофон"), QStringLiteral("Системный по умолчанию"));
    host.press(Qt::Key_End);
    EXPECT_EQ(settings.micUniqueID(), QStringLiteral("headset"));
    stage.inputs.setInputs({{QStringLiteral("usb"), QStringLiteral("USB")}});
    EXPECT_EQ(value("Микрофон"), QStringLiteral("Гарнитура — нет сейчас"));
    EXPECT_EQ(settings.micUniqueID(), QStringLiteral("headset"));
    host.press(Qt::Key_Home);
    EXPECT_EQ(settings.micUniqueID(), QString());
}

TEST_F(SettingsRecordingViewTest, FnIsNotTheHotkey_ItsKeyIsNotAsked) {
    show();
    EXPECT_TRUE(host.has(QStringLiteral("Вместо Fn")));
    click("Right ⌥");
    EXPECT_FALSE(host.has(QStringLiteral("Вместо Fn")));
}

TEST_F(SettingsRecordingViewTest, CaptureButton_TakesTheNextCombination) {
    show();
    click("Изменить");
    EXPECT_TRUE(host.has(QStringLiteral("нажмите клавишу или сочетание, напр. ⌘P…")));
    stage.keys.keyDown(keyP);
    EXPECT_TRUE(host.has(QStringLiteral("Добавьте модификатор (напр. ⌘) к букве или цифре…")));
    stage.keys.keyDown(keyP, modifier::command);
    EXPECT_TRUE(host.has(QStringLiteral("⌘ P")));
    EXPECT_TRUE(host.has(QStringLiteral("Изменить")));
    EXPECT_EQ(settings.hotkey(), QStringLiteral("custom"));
}

TEST_F(SettingsRecordingViewTest, CaptureButtonAgain_Stops) {
    show();
    click("Изменить");
    click("Отмена");
    EXPECT_FALSE(hotkey.isCapturing());
}

TEST_F(SettingsRecordingViewTest, EscapeDuringACapture_EndsItAndNothingElse) {
    showOnPage();
    click("Изменить");
    host.press(Qt::Key_Escape);
    EXPECT_FALSE(hotkey.isCapturing());
    EXPECT_EQ(escapes(), 0);
    host.press(Qt::Key_Escape);
    EXPECT_EQ(escapes(), 1);
}

TEST_F(SettingsRecordingViewTest, WindowIsLeft_EndsTheCapture) {
    show();
    click("Изменить");
    QQuickWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other, 30'000));
    EXPECT_TRUE(waitUntil([&] { return !hotkey.isCapturing(); }));
}

TEST_F(SettingsRecordingViewTest, TabIsClosed_EndsTheCaptureAndTheLevelTest) {
    showOnPage();
    ASSERT_TRUE(becomesLive(true));
    click("Изменить");
    host.root()->setProperty("opened", false);
    EXPECT_TRUE(becomesLive(false));
    EXPECT_FALSE(hotkey.isCapturing());
    EXPECT_FALSE(model.isOnScreen());
}

TEST_F(SettingsRecordingViewTest, LevelTest_RunsOnlyWhileSeen) {
    show();
    ASSERT_TRUE(becomesLive(true));
    host.window().hide();
    EXPECT_TRUE(becomesLive(false));
    host.window().show();
    EXPECT_TRUE(becomesLive(true));
    host.root()->setVisible(false);
    EXPECT_FALSE(stage.levelEngine.running);
}

TEST_F(SettingsRecordingViewTest, Voice_MovesTheBarsAndTheCapsule) {
    show();
    ASSERT_TRUE(becomesLive(true));
    const auto* meter = qobject_cast<LevelBarRow*>(host.find(QStringLiteral("Уровень микрофона")));
    ASSERT_TRUE(meter);
    EXPECT_EQ(meter->level(), 0);
    const QImage silent = host.grab();
    speak(1);
    EXPECT_EQ(meter->level(), 1);
    const QPoint lastBar = meter->mapToScene(QPointF(meter->width() - 3, 8)).toPoint();
    EXPECT_EQ(host.grab().pixelColor(lastBar), host.theme.tokens().accent);
    EXPECT_NE(silent.pixelColor(lastBar), host.theme.tokens().accent);
}

TEST_F(SettingsRecordingViewTest, Problem_IsSaidInPlaceOfTheHint) {
    const QString hint = QStringLiteral("Скажите что-нибудь — должны двигаться полоски");
    stage.levelEngine.authorizationStatus = MicrophoneAuthorization::Denied;
    show();
    ASSERT_TRUE(waitUntil([&] { return model.levelFails(); }));
    EXPECT_THAT(host.texts(), Not(Contains(hint)));
    EXPECT_THAT(host.texts(), Contains(stage.levelTest.problem()));
}

TEST_F(SettingsRecordingViewTest, Capsule_IsShownAsItIsSet) {
    show();
    QQuickItem* capsule = host.find(QStringLiteral("capsule"));
    EXPECT_EQ(capsule->height(), 60);
    settings.setHudSize(QStringLiteral("large"));
    settings.setHudPosition(QStringLiteral("top"));
    EXPECT_EQ(capsule->height(), 76);
    EXPECT_TRUE(waitUntil([&] { return capsule->y() == -9; })); // inside the picture's border
    EXPECT_THAT(host.texts(), Not(Contains(QStringLiteral("00:00"))));
    settings.setHudMinimal(false);
    EXPECT_THAT(host.texts(), Contains(QStringLiteral("00:00")));
}

TEST_F(SettingsRecordingViewTest, NoCapsuleWanted_ItsPictureIsDimmed) {
    show();
    const QQuickItem* screen = host.find(QStringLiteral("capsule"))->parentItem()->parentItem();
    EXPECT_EQ(screen->opacity(), 1);
    settings.setShowHUD(false);
    EXPECT_LT(screen->opacity(), 0.5);
}

TEST_F(SettingsRecordingViewTest, Height_IsThatOfItsContent) {
    show();
    const qreal withFn = host.root()->implicitHeight();
    EXPECT_GT(withFn, 800);
    settings.setHotkey(QStringLiteral("ralt"));
    EXPECT_TRUE(waitUntil([&] { return host.root()->implicitHeight() < withFn - 40; }));
}
