#include "clipboard_manager.h"
#include "copying_client.h"
#include "paste_desktop.h"
#include "support/desktop/target_application.h"
#include "support/desktop/wait_until.h"

#include <thread>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString before = QStringLiteral("прежнее");
const char* const passwordHint = "x-kde-passwordManagerHint";

class PutBack : public PasteDesktop {
protected:
    void openEditor() {
        m_target = TargetApplication::qtEditor(QStringLiteral(QT_EDITOR));
        ASSERT_TRUE(m_target->isReady());
    }

    void openTerminal() {
        m_target = TargetApplication::xterm();
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
    const auto kept = m_queue->save();
    paste(QStringLiteral("один раз\nдва"));
    m_queue->putBack(kept);

    ASSERT_TRUE(waitForClipboard(before));
    expectDocument(QStringLiteral("один раз\nдва"));
}

TEST_F(PutBack, ProgramPastesIntoItsOwnWindow_ItsPiecesArrive) {
    const QStringList pieces{QStringLiteral("один "), QStringLiteral("два "), QStringLiteral("три")};
    m_target = TargetApplication::qtEditor(QStringLiteral(QT_EDITOR), pieces);
    ASSERT_TRUE(m_target->isReady());

    expectDocument(pieces.join(QString()));
}

TEST_F(PutBack, MegabytesAreDictated_TerminalGetsAllOfIt) {
    openTerminal();
    copyInAnotherProgram(before);
    const auto kept = m_queue->save();
    const QString big = QString(400'000, QLatin1Char('x')) + QStringLiteral("конец");
    paste(big + QStringLiteral("\n\n"));
    m_queue->putBack(kept);

    ASSERT_TRUE(waitForClipboard(before));
    const QString arrived = m_target->document(big);
    EXPECT_TRUE(arrived == big) << arrived.size() << " characters instead of " << big.size() << ", told of "
                                << m_undelivered.size() << ", the text without the ends of line behind it";
}

TEST_F(PutBack, TerminalGetsPiecesWithLineBreaks_BreaksBetweenThemStay) {
    openTerminal();
    paste(QStringLiteral("раз\n"));
    settle();
    paste(QStringLiteral("два\n"));
    settle();

    expectDocument(QStringLiteral("раз\rдва")); // what a terminal makes of a line break
}

TEST_F(PutBack, TerminalWasTheTarget_MiddleButtonTextIsThereAgain) {
    openTerminal();
    copyInAnotherProgram(before);
    copyInAnotherProgram(QStringLiteral("отмечено"), "UTF8_STRING", "primary");
    const auto kept = m_queue->save();
    paste(QStringLiteral("один"));
    paste(QStringLiteral(" два"));
    m_queue->putBack(kept);

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_TRUE(waitUntil([&] { return m_reader.read("PRIMARY") == QStringLiteral("отмечено"); }));
    expectDocument(QStringLiteral("один два"));
}

TEST_F(PutBack, PieceIsUp_ClipboardManagersAreAskedNotToKeepIt) {
    copyInAnotherProgram(before);
    FocusedWindow window(FocusedWindow::Kind::Deaf);
    ASSERT_TRUE(window.takeFocus());
    const auto kept = m_queue->save();
    paste(QStringLiteral("секрет"));
    m_queue->putBack(kept);
    ASSERT_TRUE(waitForClipboard(QStringLiteral("секрет")));
    EXPECT_EQ(readInAnotherProgram(passwordHint), "secret");

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_TRUE(readInAnotherProgram("TARGETS").contains("UTF8_STRING"));
    EXPECT_FALSE(readInAnotherProgram("TARGETS").contains(passwordHint));
}

// ------------------------------------------------------------------------------------- whose the text is

TEST_F(PutBack, NobodyReads_OneChordThenTheClipboardIsBackAndTheTextIsTold) {
    copyInAnotherProgram(before);
    FocusedWindow window(FocusedWindow::Kind::Deaf);
    ASSERT_TRUE(window.takeFocus());
    [[maybe_unused]] const auto kept = m_queue->save();
    QString all = pasteNumberedPieces(3);
    ASSERT_TRUE(waitUntil([&] { return !m_undelivered.isEmpty(); }));
    ASSERT_TRUE(waitForClipboard(before));
    all += pasteNumberedPieces(3);
    ASSERT_TRUE(waitUntil([&] { return m_undelivered.join(QString()) == all; }));
    EXPECT_EQ(window.chords(), 1);
    EXPECT_EQ(m_reader.read("CLIPBOARD"), before);
}

TEST_F(PutBack, NoWindowHasTheFocus_TextIsToldAndTheClipboardStays) {
    copyInAnotherProgram(before);
    X11Connection x;
    const xcb_window_t owner = x.ownerOf(x.atom("CLIPBOARD"));
    const auto kept = m_queue->save();
    const QString all = pasteNumberedPieces(100);
    m_queue->putBack(kept);

    EXPECT_TRUE(waitUntil([&] { return m_undelivered.join(QString()) == all; }));
    EXPECT_EQ(x.ownerOf(x.atom("CLIPBOARD")), owner);
}

TEST_F(PutBack, UserTurnsToAnotherWindow_NothingMeantForTheFirstGetsThere) {
    copyInAnotherProgram(before);
    FocusedWindow second(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(second.takeFocus());
    FocusedWindow first(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(first.takeFocus());
    const auto kept = m_queue->save();
    const QString all = pasteNumberedPieces(100);
    // All are handed over before the focus moves: the line has seen the window they are for.
    ASSERT_TRUE(waitUntil([&] { return !first.text().isEmpty(); }));
    ASSERT_TRUE(second.takeFocus());
    m_queue->putBack(kept);

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_TRUE(waitUntil([&] { return first.text() + m_undelivered.join(QString()) == all; }));
    EXPECT_EQ(second.text(), QString());
}

TEST_F(PutBack, WindowCloses_RestGoesNowhereAndIsTold) {
    copyInAnotherProgram(before);
    FocusedWindow below(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(below.takeFocus());
    FocusedWindow window(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(window.takeFocus());
    const auto kept = m_queue->save();
    const QString all = pasteNumberedPieces(10);
    ASSERT_TRUE(waitUntil([&] { return !window.text().isEmpty(); }));
    window.close();
    ASSERT_TRUE(below.takeFocus());
    m_queue->putBack(kept);

    ASSERT_TRUE(waitForClipboard(before));
    EXPECT_TRUE(waitUntil([&] { return window.text() + m_undelivered.join(QString()) == all; }));
    EXPECT_EQ(below.text(), QString());
}

TEST_F(PutBack, ClipboardManagerReadsEverything_IsNotTakenForTheTarget) {
    copyInAnotherProgram(before);
    openEditor();
    std::jthread manager([](const std::stop_token& stop) {
        X11SelectionReader reader;
        while (!stop.stop_requested())
            [[maybe_unused]] const auto text = reader.read("CLIPBOARD");
    });
    const auto kept = m_queue->save();
    m_target->freeze();
    m_loop.delay(500ms, [this] { m_target->thaw(); });
    const QString all = pasteNumberedPieces(5);
    m_queue->putBack(kept);

    ASSERT_TRUE(waitForClipboard(before));
    expectDocument(all);
}

// ------------------------------------------------------------------------------------- the user copies
// meanwhile

TEST_F(PutBack, UserCopiesBetweenPieces_PiecesArriveAndTheCopyStays) {
    openEditor();
    copyInAnotherProgram(before);
    const auto kept = m_queue->save();
    paste(QStringLiteral("ноль "));
    expectDocument(QStringLiteral("ноль "));
    copyInAnotherProgram(QStringLiteral("новое"));
    const QString all = pasteNumberedPieces(3);
    m_queue->putBack(kept);

    expectDocument(QStringLiteral("ноль ") + all);
    EXPECT_TRUE(waitForClipboard(QStringLiteral("новое")));
}

TEST_F(PutBack, UserCopiesWhileTheTargetIsBusy_PieceArrivesAndTheCopyStays) {
    openEditor();
    copyInAnotherProgram(before);
    const auto kept = m_queue->save();
    m_target->freeze();
    paste(QStringLiteral("один"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("один")));
    // Quick, for the line waits a second for the target.
    CopyingClient client(ClipboardContents::ofText("новое"));
    client.listen();
    ASSERT_TRUE(waitUntil([&] { return !client.clipboard().isOwnerNow(); }));
    m_target->thaw();
    m_queue->putBack(kept);

    ASSERT_TRUE(waitForClipboard(QStringLiteral("новое")));
    expectDocument(QStringLiteral("один"));
}

TEST_F(PutBack, UserCopiesBeforeThePutBack_CopyStaysWithItsOwner) {
    openEditor();
    copyInAnotherProgram(before);
    const auto kept = m_queue->save();
    paste(QStringLiteral("один"));
    expectDocument(QStringLiteral("один"));
    copyInAnotherProgram(QStringLiteral("новое"));
    X11Connection x;
    const xcb_window_t owner = x.ownerOf(x.atom("CLIPBOARD"));
    m_queue->putBack(kept);
    m_queue.reset();

    EXPECT_EQ(m_reader.read("CLIPBOARD"), QStringLiteral("новое"));
    EXPECT_EQ(x.ownerOf(x.atom("CLIPBOARD")), owner);
}

// ------------------------------------------------------------------------------------- the program ends

TEST_F(PutBack, QueueEndsWithPiecesInLine_TheyArriveAndTheManagerHasTheUsersText) {
    copyInAnotherProgram(before);
    openEditor();
    ClipboardManager manager;
    const auto kept = m_queue->save();
    const QString all = pasteNumberedPieces(5);
    m_queue->putBack(kept);
    m_queue.reset();

    EXPECT_EQ(manager.saved(), before);
    expectDocument(all);
}

TEST_F(PutBack, QueueEndsInAnOpenSession_ManagerHasTheUsersText) {
    copyInAnotherProgram(before);
    openEditor();
    ClipboardManager manager;
    [[maybe_unused]] const auto kept = m_queue->save();
    paste(QStringLiteral("секрет"));
    m_queue.reset();

    EXPECT_EQ(manager.saved(), before);
    expectDocument(QStringLiteral("секрет"));
}

TEST_F(PutBack, QueueEndsWithAPieceUpAndNothingKept_NobodyGetsIt) {
    openEditor();
    ClipboardManager manager;
    paste(QStringLiteral("секрет"));
    m_queue.reset();

    EXPECT_EQ(manager.saved(), std::nullopt);
    EXPECT_EQ(m_reader.read("CLIPBOARD"), std::nullopt);
}

} // namespace
} // namespace velmora::test
