#include "core/app_settings.h"
#include "core/history_store.h"
#include "e2e/session/dictation_session.h"
#include "e2e/session/sign_in_page.h"
#include "e2e/session/tutorials.h"
#include "e2e/session/user_hand.h"
#include "foundation/user_folders.h"
#include "support/desktop/pointer.h"
#include "support/desktop/target_application.h"
#include "support/desktop/tray.h"
#include "support/desktop/wait_until.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::Contains;
using testing::Not;

namespace {

/// A property of the window that has the focus.
QByteArray ofActiveWindow(const char* property) {
    X11Connection x;
    const xcb_window_t window = x.property32(x.root(), x.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
    return x.property(window, x.atom(property));
}

QString activeTitle() {
    return QString::fromUtf8(ofActiveWindow("_NET_WM_NAME"));
}

/// Waits until one of the program's windows has the focus.
bool hasFocus() {
    return waitUntil([] { return ofActiveWindow("WM_CLASS").startsWith("velmora"); });
}

/// Waits until none of them has it any more, and the window manager has seen to that.
bool hasLostFocus() {
    return waitUntil([] { return !ofActiveWindow("WM_CLASS").startsWith("velmora"); });
}

/// The titles of what a task bar would show.
QStringList taskBar() {
    X11Connection x;
    const QByteArray list = x.property(x.root(), x.atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW);
    QStringList titles;
    for (qsizetype at = 0; at + 4 <= list.size(); at += 4) {
        xcb_window_t window = 0;
        std::memcpy(&window, list.constData() + at, sizeof window);
        const QByteArray states = x.property(window, x.atom("_NET_WM_STATE"), XCB_ATOM_ATOM);
        const xcb_atom_t skip = x.atom("_NET_WM_STATE_SKIP_TASKBAR");
        bool skipped = false;
        for (qsizetype state = 0; state + 4 <= states.size(); state += 4)
            skipped = skipped || std::memcmp(states.constData() + state, &skip, sizeof skip) == 0;
        if (!skipped)
            titles.append(QString::fromUtf8(x.property(window, x.atom("_NET_WM_NAME"))));
    }
    return titles;
}

std::vector<HistoryItem> history() {
    return HistoryStore(applicationSupportFolder()).items();
}

/// A dictation of a while ago, as the program stores it.
void remember(const char* text, std::chrono::minutes age) {
    HistoryStore store(applicationSupportFolder());
    const auto now = std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
    store.add({.date = now - age,
               .durationSec = 3,
               .rawText = QString::fromUtf8(text),
               .cleanedText = QString::fromUtf8(text),
               .appName = QStringLiteral("Editor"),
               .appBundleId = QStringLiteral("org.example.notes")});
}

class WindowsTest : public testing::Test {
protected:
    explicit WindowsTest(bool signIn = true)
        : session(signIn) {}

    void TearDown() override {
        if (HasFailure()) {
            screenshot().save(QStringLiteral("windows-failure.png"));
            std::cout << session.application().output().toStdString();
            for (const AccessibleObject& each : accessibleObjects(applicationName))
                std::cout << each.role.toStdString() << " \"" << each.name.toStdString() << "\"\n";
        }
    }

    Tray tray;
    DictationSession session;
    Pointer pointer;
};

class FirstStartTest : public WindowsTest {
protected:
    FirstStartTest()
        : WindowsTest(false) {}

    static bool isOnboarded() {
        UserDefaults defaults(defaultsPath());
        return AppSettings(defaults).hasOnboarded();
    }
};

} // namespace

TEST_F(WindowsTest, Dictating_CapsuleLiesOverTheEditorWhichKeepsTheFocus) {
    const auto editor = TargetApplication::mousepad();
    ASSERT_TRUE(editor->isReady());
    const QString title = activeTitle();
    const QImage before = screenshot();
    session.keyboard().press(key::rightControl);
    ASSERT_TRUE(DictationSession::isRecording());
    // The capsule is the one thing of this colour: nearly black, in the middle near the top edge.
    const auto capsuleShows = [&] {
        const QImage now = screenshot();
        int dark = 0;
        for (int x = now.width() / 2 - 60; x < now.width() / 2 + 60; ++x) {
            for (int y = 0; y < 70; ++y)
                dark += qGray(now.pixel(x, y)) < 60 && now.pixel(x, y) != before.pixel(x, y);
        }
        return dark > 500;
    };
    EXPECT_TRUE(waitUntil(capsuleShows));
    EXPECT_EQ(activeTitle(), title);
    EXPECT_THAT(taskBar(), Not(Contains(applicationName)));
    session.speak();
    session.keyboard().release(key::rightControl);
    const std::optional<HistoryItem> item = session.dictation(1);
    ASSERT_TRUE(item);
    EXPECT_EQ(editor->document(item->cleanedText), item->cleanedText);
    EXPECT_TRUE(waitUntil([&] { return !capsuleShows(); }));
}

TEST_F(WindowsTest, TrayIconClicked_PopupOpensAndAnOutsideClickClosesIt) {
    const auto icon = tray.icon();
    ASSERT_TRUE(icon);
    for (const uint8_t button : {1, 3}) {
        pointer.click(icon->center(), button);
        EXPECT_TRUE(shows(QStringLiteral("История")));
        EXPECT_TRUE(hasFocus());
        EXPECT_THAT(taskBar(), Not(Contains(applicationName)));
        pointer.click(QPoint(200, 600));
        EXPECT_TRUE(hides(QStringLiteral("История")));
        EXPECT_TRUE(hasLostFocus());
    }
    // With another button each time: no two make a double click.
    pointer.click(icon->center(), 1);
    EXPECT_TRUE(shows(QStringLiteral("История")));
    EXPECT_TRUE(hasFocus());
    pointer.click(icon->center(), 3);
    EXPECT_TRUE(hides(QStringLiteral("История")));
}

TEST_F(WindowsTest, ByKeyboardAlone_ADictationIsFoundCopiedAndDeleted) {
    remember("Buy milk and bread on the way home", std::chrono::minutes(30));
    remember("The quarterly report goes to the printer", std::chrono::minutes(20));
    remember("Water the plants", std::chrono::minutes(10));
    session.restartApplication();
    const auto icon = tray.icon();
    ASSERT_TRUE(icon);
    pointer.click(icon->center());
    ASSERT_TRUE(shows(QStringLiteral("История")));
    ASSERT_TRUE(hasFocus());
    press({QStringLiteral("Down"), QStringLiteral("Down"), QStringLiteral("Return")});
    ASSERT_TRUE(shows(QStringLiteral("Транскрипции")));
    // The popup is one of the program's windows too, and may have the focus still.
    ASSERT_TRUE(
        waitUntil([] { return activeTitle() == applicationName && taskBar().contains(applicationName); }));
    press({QStringLiteral("ctrl+f")});
    type(QStringLiteral("quarter"));
    press({QStringLiteral("Down"), QStringLiteral("Return")});
    ASSERT_TRUE(shows(QStringLiteral("Сырой текст")));
    press({QStringLiteral("ctrl+c")});
    EXPECT_TRUE(
        waitUntil([] { return clipboard() == QStringLiteral("The quarterly report goes to the printer"); }));

    const auto deleteFocused = [] {
        const QList<AccessibleObject> objects = accessibleObjects(applicationName);
        return std::ranges::any_of(objects, [](const AccessibleObject& each) {
            return each.focused && each.name == QStringLiteral("Удалить");
        });
    };
    for (int tab = 0; tab < 12 && !deleteFocused(); ++tab)
        press({QStringLiteral("Tab")});
    ASSERT_TRUE(deleteFocused());
    press({QStringLiteral("space")});
    EXPECT_TRUE(waitUntil([] { return history().size() == 2; }));
    for (const HistoryItem& item : history())
        EXPECT_FALSE(item.cleanedText.contains(QStringLiteral("quarterly")));
}

TEST_F(WindowsTest, SecondStart_OpensTheMainWindowWhichLeavesTheTaskBarWhenClosed) {
    EXPECT_THAT(taskBar(), Not(Contains(applicationName)));
    EXPECT_EQ(QProcess::execute(QStringLiteral(VELMORA_PROGRAM), QStringList()), 0);
    ASSERT_TRUE(shows(QStringLiteral("Транскрипции")));
    EXPECT_TRUE(
        waitUntil([] { return activeTitle() == applicationName && taskBar().contains(applicationName); }));
    press({QStringLiteral("ctrl+w")});
    EXPECT_TRUE(waitUntil([] { return !taskBar().contains(applicationName); }));
    EXPECT_TRUE(session.application().isRunning());
}

TEST_F(WindowsTest, EveryControl_HasANameAndARoleForAssistiveTechnology) {
    remember("Water the plants", std::chrono::minutes(10));
    session.restartApplication();
    const auto icon = tray.icon();
    ASSERT_TRUE(icon);
    const auto expectNamed = [](qsizetype atLeast) {
        QList<AccessibleObject> controls;
        EXPECT_TRUE(waitUntil([&] {
            controls = accessibleObjects(applicationName);
            controls.removeIf([](const AccessibleObject& each) {
                return !each.focusable || each.role == QStringLiteral("frame");
            });
            return controls.size() >= atLeast;
        })) << controls.size();
        for (const AccessibleObject& each : controls) {
            EXPECT_FALSE(each.name.isEmpty()) << each.role.toStdString();
            EXPECT_NE(each.role, QStringLiteral("invalid")) << each.name.toStdString();
            EXPECT_NE(each.role, QStringLiteral("unknown")) << each.name.toStdString();
        }
    };
    pointer.click(icon->center());
    ASSERT_TRUE(shows(QStringLiteral("Выйти")));
    expectNamed(6);
    press({QStringLiteral("Escape")});
    ASSERT_TRUE(hides(QStringLiteral("Выйти")));

    EXPECT_EQ(QProcess::execute(QStringLiteral(VELMORA_PROGRAM), QStringList()), 0);
    ASSERT_TRUE(shows(QStringLiteral("Транскрипции")));
    expectNamed(8);
}

TEST_F(FirstStartTest, ByKeyboardAlone_LeadsThroughTheSignInToTwoDictationsInItsOwnFields) {
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 1 ИЗ 5")));
    ASSERT_TRUE(hasFocus());
    press({QStringLiteral("Return")});
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 2 ИЗ 5")));
    press({QStringLiteral("Return")});
    const QString callback = createAccount(session.openedPage(), QStringLiteral("me@example.org"),
                                           QStringLiteral("correct horse"));
    EXPECT_TRUE(shows(QStringLiteral("Ждём подтверждения в браузере…")));
    const auto browser = TargetApplication::mousepad(); // in place of one: it lies over the window
    ASSERT_TRUE(browser->isReady());
    EXPECT_EQ(DictationSession::velmora(callback), 0);
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 3 ИЗ 5")));
    EXPECT_TRUE(waitUntil([] { return activeTitle() == applicationName; }));
    press({QStringLiteral("Return")});

    ASSERT_TRUE(dictatesInBothTutorials(session, [] { press({QStringLiteral("Return")}); }));
    EXPECT_FALSE(isOnboarded());
    press({QStringLiteral("Return")});
    EXPECT_TRUE(waitUntil([] { return !taskBar().contains(applicationName); }));
    EXPECT_TRUE(isOnboarded());
    EXPECT_TRUE(session.application().isRunning());
}

TEST_F(FirstStartTest, ProgramEndsInTheMiddle_ResumesThere) {
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 1 ИЗ 5")));
    ASSERT_TRUE(hasFocus());
    press({QStringLiteral("Return")});
    ASSERT_TRUE(shows(QStringLiteral("ШАГ 2 ИЗ 5")));
    EXPECT_EQ(session.application().terminate(), 0);
    EXPECT_FALSE(isOnboarded());
    session.restartApplication();
    EXPECT_TRUE(shows(QStringLiteral("ШАГ 2 ИЗ 5")));
    ASSERT_TRUE(hasFocus());
    press({QStringLiteral("ctrl+w")});
    EXPECT_TRUE(waitUntil([] { return !taskBar().contains(applicationName); }));
    EXPECT_TRUE(isOnboarded());
}
