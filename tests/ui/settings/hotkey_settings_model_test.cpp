#include "recording_settings_fixture.h"

#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

class HotkeySettingsModelTest : public RecordingSettingsTest {
protected:
    HotkeySettingsModelTest() {
        settings.setHotkey(QStringLiteral("ralt"));
        stage.hotkey.start();
        loop.runPosted();
    }

    /// A capture ends a little before the hotkey counts again.
    void afterAMoment() { loop.advance(std::chrono::milliseconds(100)); }
    /// Whether the dictation hears its hotkey, the right Alt key.
    [[nodiscard]] bool isDictating() {
        stage.taps.flagsChanged(modifier::option | modifier::rightOption);
        loop.runPosted();
        const bool heard = stage.hotkey.isHotkeyDown();
        stage.taps.flagsChanged(0);
        loop.runPosted();
        return heard;
    }
};

const QString usualHint = QStringLiteral("удерживайте, говорите, отпустите");
const QString captureHint = QStringLiteral("нажмите клавишу или сочетание, напр. ⌘P…");
const QString modifierHint = QStringLiteral("Добавьте модификатор (напр. ⌘) к букве или цифре…");

QStringList part(const QVariantList& options, const char* name) {
    QStringList values;
    for (const QVariant& option : options)
        values.append(option.toMap()[QLatin1String(name)].toString());
    return values;
}

} // namespace

TEST_F(HotkeySettingsModelTest, QuickChoices_AreNamedAsTheWindowNamesThem) {
    EXPECT_THAT(part(hotkey.quickChoices(), "value"),
                ElementsAre(QStringLiteral("fn"), QStringLiteral("ralt"), QStringLiteral("rcmd")));
    EXPECT_THAT(part(hotkey.quickChoices(), "title"),
                ElementsAre(QStringLiteral("Fn"), QStringLiteral("Right ⌥"), QStringLiteral("Right ⌘")));
}

TEST_F(HotkeySettingsModelTest, FnKeys_AreThoseThatCanPlayIt) {
    EXPECT_THAT(part(hotkey.fnKeys(), "value"),
                ElementsAre(QStringLiteral("none"), QStringLiteral("rctrl"), QStringLiteral("ralt"),
                            QStringLiteral("rcmd"), QStringLiteral("menu"), QStringLiteral("scrolllock"),
                            QStringLiteral("pause")));
    EXPECT_THAT(part(hotkey.fnKeys(), "title"),
                ElementsAre(QStringLiteral("нет"), QStringLiteral("правый Ctrl"),
                            QStringLiteral("правый Alt"), QStringLiteral("правый Super"),
                            QStringLiteral("Menu"), QStringLiteral("Scroll Lock"), QStringLiteral("Pause")));
}

TEST_F(HotkeySettingsModelTest, EachStoredHotkey_IsShown) {
    settings.setHotkeyCustomLabel(QStringLiteral("⌘ P"));
    struct Case {
        const char* stored;
        const char* label;
        const char* chosen;
        bool isFn;
        const char* note;
    };
    for (const Case& c : {
             Case{"fn", "Fn", "fn", true, "Fn здесь — правый Ctrl"},
             Case{"ralt", "Right ⌥", "ralt", false, ""},
             Case{"rcmd", "Right ⌘", "rcmd", false, ""},
             Case{"custom", "⌘ P", "custom", false, ""},
             Case{"hyper", "Fn", "fn", true, "Fn здесь — правый Ctrl"},
         }) {
        settings.setHotkey(QLatin1String(c.stored));
        EXPECT_EQ(hotkey.label().toStdString(), c.label) << c.stored;
        EXPECT_EQ(hotkey.chosen(), QLatin1String(c.chosen)) << c.stored;
        EXPECT_EQ(hotkey.isFn(), c.isFn) << c.stored;
        EXPECT_EQ(hotkey.note().toStdString(), c.note) << c.stored;
        EXPECT_EQ(hotkey.hint(), usualHint);
        EXPECT_FALSE(hotkey.hintWarns());
    }
}

TEST_F(HotkeySettingsModelTest, EachStoredFnKey_IsShown) {
    settings.setHotkey(QStringLiteral("fn"));
    struct Case {
        const char* stored;
        const char* shown;
        const char* note;
    };
    for (const Case& c : {Case{"menu", "menu", "Fn здесь — Menu"}, Case{"none", "none", ""},
                          Case{"turbo", "rctrl", "Fn здесь — правый Ctrl"}}) {
        settings.setFnStandIn(QLatin1String(c.stored));
        EXPECT_EQ(hotkey.fnKey(), QLatin1String(c.shown));
        EXPECT_EQ(hotkey.note().toStdString(), c.note);
    }
    hotkey.setFnKey(QStringLiteral("pause"));
    EXPECT_EQ(settings.fnStandIn(), QStringLiteral("pause"));
}

TEST_F(HotkeySettingsModelTest, ChangedElsewhere_IsSaid) {
    const QSignalSpy changes(&hotkey, &HotkeySettingsModel::changed);
    settings.setHotkey(QStringLiteral("rcmd"));
    settings.setFnStandIn(QStringLiteral("menu"));
    settings.setHotkeyCustomLabel(QStringLiteral("F5"));
    EXPECT_EQ(changes.size(), 3);
}

TEST_F(HotkeySettingsModelTest, Capture_StoresAllOfItAndTheHotkeyLast) {
    QStringList written;
    QObject::connect(&defaults, &UserDefaults::changed, &model, [&](const QString& key) { written += key; });
    hotkey.toggleCapture();
    EXPECT_TRUE(hotkey.isCapturing());
    EXPECT_EQ(hotkey.hint(), captureHint);
    EXPECT_FALSE(hotkey.hintWarns());
    EXPECT_EQ(hotkey.label(), QStringLiteral("…"));
    stage.keys.keyDown(keyP, modifier::command | modifier::leftCommand);
    EXPECT_FALSE(hotkey.isCapturing());
    EXPECT_THAT(written,
                ElementsAre(QStringLiteral("hotkeyCustomMask"), QStringLiteral("hotkeyCustomKeyCode"),
                            QStringLiteral("hotkeyCustomLabel"), QStringLiteral("hotkey")));
    EXPECT_EQ(settings.hotkey(), QStringLiteral("custom"));
    EXPECT_EQ(settings.hotkeyCustomMask(), qint64{modifier::command});
    EXPECT_EQ(settings.hotkeyCustomKeyCode(), keyP);
    EXPECT_EQ(hotkey.label(), QStringLiteral("⌘ P"));
    EXPECT_EQ(hotkey.hint(), usualHint);
    EXPECT_EQ(stage.keys.count(), 0U);
}

TEST_F(HotkeySettingsModelTest, LetterAlone_AsksForAModifier) {
    hotkey.toggleCapture();
    stage.keys.keyDown(keyP);
    EXPECT_TRUE(hotkey.isCapturing());
    EXPECT_EQ(hotkey.hint(), modifierHint);
    EXPECT_TRUE(hotkey.hintWarns());
    stage.keys.flagsChanged(0); // the letter's release
    stage.keys.flagsChanged(modifier::command | modifier::rightCommand);
    stage.keys.flagsChanged(0);
    EXPECT_EQ(hotkey.label(), QStringLiteral("Right ⌘"));
    EXPECT_EQ(settings.hotkeyCustomKeyCode(), -1);
}

TEST_F(HotkeySettingsModelTest, WhileCapturing_TheOldHotkeyDictatesNothing) {
    ASSERT_TRUE(isDictating());
    hotkey.toggleCapture();
    EXPECT_FALSE(isDictating());
    hotkey.toggleCapture();
    afterAMoment();
    EXPECT_TRUE(isDictating());
}

TEST_F(HotkeySettingsModelTest, CapturedKeyReachesTheMonitorLate_DictatesNothing) {
    constexpr int keyF5 = 96;
    hotkey.toggleCapture();
    stage.keys.keyDown(keyF5);
    ASSERT_EQ(hotkey.label(), QStringLiteral("F5"));
    stage.taps.keyDown(keyF5);
    loop.runPosted();
    EXPECT_FALSE(stage.hotkey.isHotkeyDown());
    afterAMoment();
    stage.taps.keyDown(keyF5); // its repeat
    loop.runPosted();
    EXPECT_FALSE(stage.hotkey.isHotkeyDown());
    stage.taps.keyUp(keyF5);
    stage.taps.keyDown(keyF5);
    loop.runPosted();
    EXPECT_TRUE(stage.hotkey.isHotkeyDown());
}

TEST_F(HotkeySettingsModelTest, CaptureForgotten_GivesTheKeyboardBack) {
    hotkey.toggleCapture();
    loop.advance(std::chrono::seconds(29));
    EXPECT_TRUE(hotkey.isCapturing());
    loop.advance(std::chrono::seconds(1));
    EXPECT_FALSE(hotkey.isCapturing());
    EXPECT_EQ(stage.keys.count(), 0U);
    afterAMoment();
    EXPECT_TRUE(isDictating());
    hotkey.toggleCapture(); // the next one has a time of its own
    loop.advance(std::chrono::seconds(29));
    EXPECT_TRUE(hotkey.isCapturing());
}

TEST_F(HotkeySettingsModelTest, EachEndOfACapture_LetsTheHotkeyDictateAgain) {
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"Esc", [&] { stage.keys.keyDown(keyEscape); }},
        {"the button", [&] { hotkey.toggleCapture(); }},
        {"from outside", [&] { hotkey.stopCapture(); }},
        {"another is chosen", [&] { hotkey.choose(QStringLiteral("ralt")); }},
    };
    for (const auto& [name, end] : ends) {
        hotkey.toggleCapture();
        ASSERT_TRUE(hotkey.isCapturing()) << name;
        end();
        EXPECT_FALSE(hotkey.isCapturing()) << name;
        EXPECT_EQ(stage.keys.count(), 0U) << name;
        afterAMoment();
        EXPECT_TRUE(isDictating()) << name;
        EXPECT_EQ(settings.hotkey(), QStringLiteral("ralt")) << name;
    }
}

TEST_F(HotkeySettingsModelTest, GoneWhileCapturing_LetsTheHotkeyDictateAgain) {
    {
        HotkeySettingsModel other(stage.neighbours);
        other.toggleCapture();
        ASSERT_FALSE(isDictating());
    }
    EXPECT_TRUE(isDictating());
    EXPECT_EQ(stage.keys.count(), 0U);
}

TEST_F(HotkeySettingsModelTest, KeyboardRefused_SaysSoUntilTheNextAttempt) {
    stage.rights.granted = {PrivacyRight::InputMonitoring};
    stage.perms.refresh();
    stage.keys.allowed = false;
    hotkey.toggleCapture();
    EXPECT_FALSE(hotkey.isCapturing());
    EXPECT_EQ(hotkey.hint(),
              QStringLiteral("Клавиатуру сейчас держит другая программа. Попробуйте ещё раз."));
    EXPECT_TRUE(hotkey.hintWarns());
    afterAMoment();
    EXPECT_TRUE(isDictating());
    stage.keys.allowed = true;
    hotkey.toggleCapture();
    EXPECT_TRUE(hotkey.isCapturing());
    EXPECT_EQ(hotkey.hint(), captureHint);
    hotkey.toggleCapture();
    EXPECT_EQ(hotkey.hint(), usualHint);
    EXPECT_FALSE(hotkey.hintWarns());
}

TEST_F(HotkeySettingsModelTest, SessionWithoutKeys_IsNotBlamedOnAnotherProgram) {
    stage.keys.allowed = false;
    hotkey.toggleCapture();
    EXPECT_EQ(hotkey.hint(), QStringLiteral("В этом сеансе клавиши не видны, см. «Разрешения»."));
}

TEST_F(HotkeySettingsModelTest, QuickChoice_IsStoredAtOnce) {
    hotkey.choose(QStringLiteral("rcmd"));
    EXPECT_EQ(settings.hotkey(), QStringLiteral("rcmd"));
}
