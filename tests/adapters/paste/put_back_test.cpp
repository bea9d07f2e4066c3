#include "clipboard_manager.h"
#include "paste_desktop.h"
#include "support/desktop/target_application.h"
#include "support/desktop/wait_until.h"

#include <thread>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString before = QStringLiteral("прежнее");
const char* const passwordHint = "x-kde-passwordManagerHint";

// A window with the keyboard focus that never pastes.
class DeafWindow {
public:
    DeafWindow() {
        m_window = xcb_generate_id(m_x.get());
        xcb_create_window(m_x.get(), XCB_COPY_FROM_PARENT, m_window, m_x.root(), 0, 0, 100, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(m_x.get(), m_window);
        m_x.flush();
    }

    bool waitForFocus() {
        return waitUntil([this] {
            const XcbReply<xcb_get_input_focus_reply_t> focus(
                xcb_get_input_focus_reply(m_x.get(), xcb_get_input_focus(m_x.get()), nullptr));
            return focus && focus->focus == m_window;
        });
    }

private:
    X11Connection m_x;
    xcb_window_t m_window;
};

class PutBack : public PasteDesktop {
protected:
    void openEditor() {
        m_target = TargetApplication::qtEditor(QStringLiteral(QT_EDITOR));
        ASSERT_TRUE(m_target->isReady());
    }

    void expectDocument(const QString& text) {
        EXPECT_EQ(m_target->document(text).toStdString(), text.toStdString());
    }

    std::unique_ptr<TargetApplication> m_target;
};

TEST_F(PutBack, OneText_ArrivesAndTheUsersTextIsThereAgain) {
    m_target = TargetApplication::mousepad();
    ASSERT_TRUE(m_target->isReady());
    copyInAnotherProgram(before);
    const auto kept = m_queue->string();
    EXPECT_EQ(kept, before);
    paste(QStringLiteral("один раз\nдва"));
    EXPECT_EQ(m_queue->string(), QStringLiteral("один раз\nдва"));
    putBack(kept);
    EXPECT_EQ(m_queue->string(), before);

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_EQ(readInAnotherProgram(), before);
    expectDocument(QStringLiteral("один раз\nдва"));
}

TEST_F(PutBack, ProgramPastesIntoItsOwnWindow_ItsPiecesArrive) {
    const QStringList pieces{QStringLiteral("один "), QStringLiteral("два "), QStringLiteral("три")};
    m_target = TargetApplication::qtEditor(QStringLiteral(QT_EDITOR), pieces);
    ASSERT_TRUE(m_target->isReady());

    expectDocument(pieces.join(QString()));
}

TEST_F(PutBack, ClipboardWasEmpty_IsEmptyAgain) {
    openEditor();
    const auto kept = m_queue->string();
    EXPECT_EQ(kept, std::nullopt);
    paste(QStringLiteral("один"));
    putBack(kept);

    expectDocument(QStringLiteral("один"));
    X11Connection x;
    EXPECT_TRUE(waitUntil([&] { return x.ownerOf(x.atom("CLIPBOARD")) == XCB_WINDOW_NONE; }));
}

TEST_F(PutBack, MegabytesWereThere_AreThereAgain) {
    openEditor();
    const QString big(3'000'000, QLatin1Char('x'));
    copyInAnotherProgram(big);
    const auto kept = m_queue->string();
    paste(QStringLiteral("один"));
    putBack(kept);

    EXPECT_TRUE(waitForClipboard(big));
    expectDocument(QStringLiteral("один"));
}

TEST_F(PutBack, MegabytesAreDictated_TerminalGetsAllOfIt) {
    m_target = TargetApplication::xterm();
    ASSERT_TRUE(m_target->isReady());
    const QString big = QString(400'000, QLatin1Char('x')) + QStringLiteral("конец");
    paste(big + QStringLiteral("\n\n"));
    putBack(before);

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_TRUE(m_target->document(big) == big) << "the text, without the ends of line behind it";
}

TEST_F(PutBack, TerminalWasTheTarget_MiddleButtonTextIsThereAgain) {
    m_target = TargetApplication::xterm();
    ASSERT_TRUE(m_target->isReady());
    copyInAnotherProgram(QStringLiteral("отмечено"), "UTF8_STRING", "primary");
    paste(QStringLiteral("один"));
    paste(QStringLiteral(" два"));
    putBack(before);

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_TRUE(waitUntil([&] { return m_reader.read("PRIMARY") == QStringLiteral("отмечено"); }));
    expectDocument(QStringLiteral("один два"));
}

TEST_F(PutBack, PieceIsUp_ClipboardManagersAreAskedNotToKeepIt) {
    DeafWindow window;
    ASSERT_TRUE(window.waitForFocus());
    paste(QStringLiteral("секрет"));
    putBack(before);
    ASSERT_TRUE(waitForClipboard(QStringLiteral("секрет")));
    EXPECT_TRUE(readInAnotherProgram("TARGETS").contains(QLatin1String(passwordHint)));
    EXPECT_EQ(readInAnotherProgram(passwordHint), QStringLiteral("secret"));

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_TRUE(readInAnotherProgram("TARGETS").contains(QLatin1String("UTF8_STRING")));
    EXPECT_FALSE(readInAnotherProgram("TARGETS").contains(QLatin1String(passwordHint)));
}

TEST_F(PutBack, NobodyReads_LineGoesOn) {
    DeafWindow window;
    ASSERT_TRUE(window.waitForFocus());
    paste(QStringLiteral("один"));
    paste(QStringLiteral("два"));
    putBack(before);

    ASSERT_TRUE(waitForClipboard(QStringLiteral("один")));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("два")));
    ASSERT_TRUE(waitForClipboard(before));
}

TEST_F(PutBack, NoWindowHasTheFocus_LineGoesOn) {
    const QString all = pasteNumberedPieces(100);
    putBack(before);

    ASSERT_TRUE(waitForClipboard(before));
}

TEST_F(PutBack, ClipboardManagerReadsEverything_IsNotTakenForTheTarget) {
    openEditor();
    std::jthread manager([](const std::stop_token& stop) {
        X11SelectionReader reader;
        while (!stop.stop_requested())
            [[maybe_unused]] const auto text = reader.read("CLIPBOARD");
    });
    m_target->freeze();
    m_loop.delay(500ms, [this] { m_target->thaw(); });
    const QString all = pasteNumberedPieces(5);
    putBack(before);

    ASSERT_TRUE(waitForClipboard(before));
    expectDocument(all);
}

TEST_F(PutBack, UserCopiesBetweenPieces_PiecesArriveAndTheCopyStays) {
    openEditor();
    copyInAnotherProgram(before);
    const auto kept = m_queue->string();
    QString all = pasteNumberedPieces(3);
    copyInAnotherProgram(QStringLiteral("новое"));
    all += pasteNumberedPieces(3);
    putBack(kept);

    expectDocument(all);
    EXPECT_TRUE(waitForClipboard(QStringLiteral("новое")));
    EXPECT_TRUE(waitUntil([&] { return m_queue->string() == QStringLiteral("новое"); }));
}

TEST_F(PutBack, UserCopiesWhileTheTargetIsBusy_PieceArrivesAndTheCopyStays) {
    openEditor();
    copyInAnotherProgram(before);
    const auto kept = m_queue->string();
    m_target->freeze();
    paste(QStringLiteral("один"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("один")));
    copyInAnotherProgram(QStringLiteral("новое"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("один")));
    m_target->thaw();
    putBack(kept);

    ASSERT_TRUE(waitForClipboard(QStringLiteral("новое")));
    expectDocument(QStringLiteral("один"));
}

TEST_F(PutBack, UserCopiesBeforeThePutBack_CopyStaysWithItsOwner) {
    openEditor();
    copyInAnotherProgram(before);
    const auto kept = m_queue->string();
    paste(QStringLiteral("один"));
    expectDocument(QStringLiteral("один"));
    copyInAnotherProgram(QStringLiteral("новое"));
    X11Connection x;
    const xcb_window_t owner = x.ownerOf(x.atom("CLIPBOARD"));
    putBack(kept);

    EXPECT_TRUE(waitUntil([&] { return m_queue->string() == QStringLiteral("новое"); }));
    EXPECT_EQ(x.ownerOf(x.atom("CLIPBOARD")), owner);
}

TEST_F(PutBack, UserCopiesOnPurposeLater_IsNotTakenForAPutBack) {
    copyInAnotherProgram(before);
    const auto kept = m_queue->string();
    copyInAnotherProgram(QStringLiteral("новое"));
    m_queue->setString(QStringLiteral("из истории"));

    EXPECT_TRUE(waitForClipboard(QStringLiteral("из истории")));
}

TEST_F(PutBack, QueueEndsWithPiecesInLine_ClipboardManagerHasTheUsersText) {
    DeafWindow window;
    ASSERT_TRUE(window.waitForFocus());
    ClipboardManager manager;
    paste(QStringLiteral("один"));
    paste(QStringLiteral("два"));
    putBack(before);
    m_queue.reset();

    EXPECT_EQ(manager.saved(), before);
}

TEST_F(PutBack, QueueEndsWithAPieceUp_ClipboardManagerDoesNotGetIt) {
    DeafWindow window;
    ASSERT_TRUE(window.waitForFocus());
    ClipboardManager manager;
    paste(QStringLiteral("секрет"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("секрет")));
    m_queue.reset();

    EXPECT_EQ(manager.saved(), std::nullopt);
}

} // namespace
} // namespace velmora::test
