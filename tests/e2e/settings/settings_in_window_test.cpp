#include "core/app_settings.h"
#include "e2e/session/dictation_session.h"
#include "e2e/session/user_hand.h"
#include "foundation/user_folders.h"
#include "support/desktop/tray.h"
#include "support/desktop/wait_until.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr xcb_keycode_t keyF9 = 75;

/// How many captures programs have open, as the sound server lists them; its own modules are no programs.
qsizetype captures() {
    return output(QStringLiteral("pactl"), {QStringLiteral("list"), QStringLiteral("source-outputs")})
        .count("protocol-native");
}

/// The settings in the program's own window, worked by pointer and keyboard.
class SettingsInWindowTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(tray.icon()); // the start is over
        ASSERT_EQ(QProcess::execute(QStringLiteral(VELMORA_PROGRAM), QStringList()), 0);
        ASSERT_TRUE(shows(QStringLiteral("Транскрипции")));
        ASSERT_TRUE(click(QStringLiteral("Настройки")));
        ASSERT_TRUE(shows(QStringLiteral("Акцентный цвет")));
    }
    void TearDown() override {
        if (!HasFailure())
            return;
        screenshot().save(QStringLiteral("settings-in-window-failure.png"));
        std::cout << session.application().output().toStdString();
        for (const AccessibleObject& each : accessibleObjects(applicationName))
            std::cout << each.role.toStdString() << " \"" << each.name.toStdString() << "\"\n";
    }

    Tray tray;
    DictationSession session;
};

} // namespace

TEST_F(SettingsInWindowTest, RecordingTab_ListensOnlyWhileItIsOpen) {
    EXPECT_EQ(captures(), 0);
    ASSERT_TRUE(click(QStringLiteral("Запись")));
    EXPECT_TRUE(waitUntil([] { return captures() == 1; }));
    ASSERT_TRUE(click(QStringLiteral("Общие")));
    EXPECT_TRUE(waitUntil([] { return captures() == 0; }));
    ASSERT_TRUE(click(QStringLiteral("Запись")));
    EXPECT_TRUE(waitUntil([] { return captures() == 1; }));
    press({QStringLiteral("ctrl+w")});
    EXPECT_TRUE(waitUntil([] { return captures() == 0; }));
}

TEST_F(SettingsInWindowTest, HotkeyCaptured_DictatesWithTheNextPress) {
    ASSERT_TRUE(click(QStringLiteral("Запись")));
    ASSERT_TRUE(click(QStringLiteral("Изменить")));
    ASSERT_TRUE(shows(QStringLiteral("нажмите клавишу или сочетание, напр. ⌘P…")));
    session.keyboard().tap(keyF9);
    ASSERT_TRUE(shows(QStringLiteral("F9")));
    ASSERT_TRUE(shows(QStringLiteral("Изменить")));
    session.keyboard().press(keyF9);
    ASSERT_TRUE(DictationSession::isRecording());
    session.speak();
    session.keyboard().release(keyF9);
    const std::optional<HistoryItem> item = session.dictation(1);
    ASSERT_TRUE(item);
    EXPECT_GE(DictationSession::wordsHeard(item->cleanedText), 8) << item->cleanedText.toStdString();
}

TEST_F(SettingsInWindowTest, CombinationsCapturedOneAfterTheOther_DictateNothing) {
    ASSERT_TRUE(click(QStringLiteral("Запись")));
    ASSERT_TRUE(waitUntil([] { return captures() == 1; })); // the level test's
    constexpr xcb_keycode_t letterD = 40;
    constexpr xcb_keycode_t letterE = 26;
    for (int round = 0; round < 8; ++round) {
        ASSERT_TRUE(click(QStringLiteral("Изменить")));
        ASSERT_TRUE(shows(QStringLiteral("нажмите клавишу или сочетание, напр. ⌘P…")));
        const bool even = round % 2 == 0;
        for (const xcb_keycode_t each : {key::leftControl, key::leftAlt, even ? letterD : letterE})
            session.keyboard().press(each);
        ASSERT_TRUE(shows(even ? QStringLiteral("⌃⌥ D") : QStringLiteral("⌃⌥ E")));
        for (const xcb_keycode_t each : {even ? letterD : letterE, key::leftAlt, key::leftControl})
            session.keyboard().release(each);
        EXPECT_EQ(captures(), 1);
    }
    EXPECT_FALSE(session.application().output().contains("dictation:"));
}

TEST_F(SettingsInWindowTest, EveryControlOfEveryTab_HasANameAndARole) {
    for (const char* tab : {"Общие", "Запись", "Обработка", "Разрешения", "О программе"}) {
        ASSERT_TRUE(click(QString::fromUtf8(tab)));
        bool complete = false;
        QList<AccessibleObject> controls;
        EXPECT_TRUE(waitUntil([&] {
            controls = accessibleObjects(applicationName, &complete);
            controls.removeIf([](const AccessibleObject& each) {
                return !each.focusable || each.role == QStringLiteral("frame");
            });
            return complete && controls.size() >= 8; // five tabs, the account, the way out, and the tab's own
        })) << tab;
        for (const AccessibleObject& each : controls) {
            EXPECT_FALSE(each.name.isEmpty()) << tab << ": " << each.role.toStdString();
            EXPECT_NE(each.role, QStringLiteral("invalid")) << tab << ": " << each.name.toStdString();
            EXPECT_NE(each.role, QStringLiteral("unknown")) << tab << ": " << each.name.toStdString();
        }
    }
}
