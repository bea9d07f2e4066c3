#include "clipboard_manager.h"
#include "copying_client.h"
#include "paste_desktop.h"
#include "platform/linux/start_clipboard_keeper.h"
#include "support/desktop/wait_until.h"

#include <QProcess>

namespace velmora::test {
namespace {

using Clipboard = PasteDesktop;

QString bigText() {
    QString text;
    for (int line = 0; text.size() < 4'000'000; ++line)
        text += QStringLiteral("строка номер %1\n").arg(line);
    return text;
}

TEST_F(Clipboard, TextIsWritten_OthersReadItInEveryFormAtOnce) {
    write(QStringLiteral("своё"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("своё")));

    EXPECT_EQ(readInAnotherProgram("UTF8_STRING"), "своё");
    EXPECT_EQ(readInAnotherProgram("text/plain;charset=utf-8"), "своё");
    EXPECT_EQ(readInAnotherProgram("TEXT"), "своё");
    EXPECT_EQ(readInAnotherProgram("image/png"), "");
}

TEST_F(Clipboard, LatinTextIsWritten_OldProgramsReadIt) {
    write(QStringLiteral("plain"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("plain")));
    EXPECT_EQ(readInAnotherProgram("STRING"), "plain");
}

TEST_F(Clipboard, Cleared_NobodyOwnsIt) {
    copyInAnotherProgram(QStringLiteral("чужое"));
    write(std::nullopt);

    X11Connection x;
    EXPECT_TRUE(waitUntil([&] { return x.ownerOf(x.atom("CLIPBOARD")) == XCB_WINDOW_NONE; }));
}

TEST_F(Clipboard, ClearedAndWrittenAgain_IsNeverWithoutOwner) {
    write(QStringLiteral("первое"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("первое")));
    X11Connection x;
    const xcb_window_t owner = x.ownerOf(x.atom("CLIPBOARD"));
    write(QStringLiteral("второе"));

    EXPECT_TRUE(waitUntil([&] {
        EXPECT_EQ(x.ownerOf(x.atom("CLIPBOARD")), owner);
        return m_reader.read("CLIPBOARD") == QStringLiteral("второе");
    }));
}

TEST_F(Clipboard, MegabytesAreWritten_SeveralReadersAtOnceGetAllOfIt) {
    const QString text = bigText();
    write(text);
    ASSERT_TRUE(waitForClipboard(text));

    QProcess readers[3];
    for (QProcess& reader : readers)
        reader.start(QStringLiteral("xclip"),
                     {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
    for (QProcess& reader : readers) {
        ASSERT_TRUE(waitUntil([&] { return reader.state() == QProcess::NotRunning; }));
        EXPECT_TRUE(QString::fromUtf8(reader.readAllStandardOutput()) == text) << "all of it";
    }
}

// ------------------------------------------------------------------------------------- what is kept

TEST_F(Clipboard, KeptText_ComesBack) {
    copyInAnotherProgram(QStringLiteral("чужое"));
    borrow();
    EXPECT_TRUE(waitForClipboard(QStringLiteral("чужое")));
    EXPECT_EQ(readInAnotherProgram(), "чужое");
}

TEST_F(Clipboard, KeptLatinText_ComesBack) {
    copyInAnotherProgram(QStringLiteral("plain"), "STRING");
    borrow();
    EXPECT_TRUE(waitForClipboard(QStringLiteral("plain")));
}

TEST_F(Clipboard, KeptNothing_IsEmptyAgain) {
    borrow();
    X11Connection x;
    EXPECT_TRUE(waitUntil([&] { return x.ownerOf(x.atom("CLIPBOARD")) == XCB_WINDOW_NONE; }));
}

TEST_F(Clipboard, KeptMegabytes_ComeBack) {
    const QString text = bigText();
    copyInAnotherProgram(text);
    borrow();
    EXPECT_TRUE(waitForClipboard(text));
}

TEST_F(Clipboard, KeptForms_AllComeBackByteByByte) {
    QByteArray picture("\x89PNG\r\n\x1a\n", 8);
    for (int at = 0; picture.size() < 1'000'000; ++at)
        picture += static_cast<char>(at * 7);
    copyInAnotherProgram({.forms = {{ClipboardContents::plainText, "чужое"},
                                    {"text/html", "<b>чужое</b>"},
                                    {"text/uri-list", "file:///tmp/a%20b\r\n"},
                                    {"image/png", picture}}});
    borrow();
    EXPECT_TRUE(waitForClipboard(QStringLiteral("чужое")));
    EXPECT_EQ(readInAnotherProgram("text/html"), "<b>чужое</b>");
    EXPECT_EQ(readInAnotherProgram("text/uri-list"), "file:///tmp/a%20b\r\n");
    EXPECT_TRUE(readInAnotherProgram("image/png") == picture);
}

TEST_F(Clipboard, KeptImageWithoutText_ComesBack) {
    copyInAnotherProgram({.forms = {{"image/png", "picture"}}});
    borrow();
    EXPECT_TRUE(waitUntil([] { return readInAnotherProgram("image/png") == "picture"; }));
    EXPECT_EQ(readInAnotherProgram("UTF8_STRING"), "");
}

TEST_F(Clipboard, OwnerAnswersEverythingWithItsText_OnlyTheTextComesBack) {
    copyInAnotherProgram(QStringLiteral("чужое")); // xclip does
    borrow();
    ASSERT_TRUE(waitForClipboard(QStringLiteral("чужое")));
    EXPECT_FALSE(readInAnotherProgram("TARGETS").contains("image/png"));
}

TEST_F(Clipboard, KeptPassword_StaysOutOfClipboardManagers) {
    copyInAnotherProgram({.forms = {{ClipboardContents::plainText, "hunter2"}}, .secret = true});
    borrow();
    ASSERT_TRUE(waitForClipboard(QStringLiteral("hunter2")));
    EXPECT_EQ(readInAnotherProgram("x-kde-passwordManagerHint"), "secret");
}

TEST_F(Clipboard, KeptMoreThanTheBound_TextComesBackWithoutTheRest) {
    copyInAnotherProgram({.forms = {{ClipboardContents::plainText, "чужое"},
                                    {"image/png", QByteArray(17 * 1024 * 1024, 'x')}}});
    borrow();
    EXPECT_TRUE(waitForClipboard(QStringLiteral("чужое")));
    EXPECT_FALSE(readInAnotherProgram("TARGETS").contains("image/png"));
}

// The owner lives on this thread: it could not answer if this waited for it.
TEST_F(Clipboard, OwnerAnswersOnlyAfterwards_MainThreadHasNotWaited) {
    CopyingClient client(ClipboardContents::ofText("чужое"));
    ASSERT_TRUE(client.clipboard().owns());
    bool wasAsked = false;
    client.clipboard().onAnswered([&](const X11SelectionOwner::Question&) { wasAsked = true; });
    FocusedWindow target(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(target.takeFocus());
    const auto kept = m_queue->save();
    paste(QStringLiteral("кусок"));
    EXPECT_FALSE(wasAsked);
    m_queue->putBack(kept);
    client.listen();
    EXPECT_TRUE(waitUntil([&] { return wasAsked && !client.clipboard().isOwnerNow(); }));
    EXPECT_TRUE(waitForClipboard(QStringLiteral("чужое")));
}

TEST_F(Clipboard, OwnerNeverAnswers_ClipboardIsEmptyAfterwards) {
    X11Connection silent;
    const xcb_window_t window = silent.createWindow(XCB_EVENT_MASK_NO_EVENT);
    xcb_set_selection_owner(silent.get(), window, silent.atom("CLIPBOARD"), XCB_CURRENT_TIME);
    ASSERT_EQ(silent.ownerOf(silent.atom("CLIPBOARD")), window);
    FocusedWindow target(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(target.takeFocus());
    const auto kept = m_queue->save();
    paste(QStringLiteral("кусок"));
    m_queue->putBack(kept);

    EXPECT_TRUE(waitUntil([&] { return silent.ownerOf(silent.atom("CLIPBOARD")) == XCB_WINDOW_NONE; }));
}

// ------------------------------------------------------------------------------------- the program ends

TEST_F(Clipboard, QueueEnds_ClipboardManagerHasTheText) {
    ClipboardManager manager;
    write(QStringLiteral("останется"));
    m_queue.reset();

    EXPECT_EQ(manager.saved(), QStringLiteral("останется"));
}

TEST_F(Clipboard, QueueEndsWithoutAManager_EveryFormStaysUntilTheNextCopy) {
    copyInAnotherProgram({.forms = {{ClipboardContents::plainText, "чужое"}, {"text/html", "<b>чужое</b>"}}});
    FocusedWindow window(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(window.takeFocus());
    [[maybe_unused]] const auto kept = m_queue->save();
    paste(QStringLiteral("кусок"));
    m_queue.reset();

    EXPECT_EQ(m_reader.read("CLIPBOARD"), QStringLiteral("чужое"));
    EXPECT_EQ(readInAnotherProgram("text/html"), "<b>чужое</b>");
    copyInAnotherProgram(QStringLiteral("новое"));
    EXPECT_EQ(m_reader.read("CLIPBOARD"), QStringLiteral("новое"));
}

TEST_F(Clipboard, QueueEndsWithAnEmptyClipboardToPutBack_ItIsEmpty) {
    FocusedWindow window(FocusedWindow::Kind::Pasting);
    ASSERT_TRUE(window.takeFocus());
    [[maybe_unused]] const auto kept = m_queue->save();
    paste(QStringLiteral("кусок"));
    m_queue.reset();

    X11Connection x;
    EXPECT_EQ(x.ownerOf(x.atom("CLIPBOARD")), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(Clipboard, QueueEndsAndTheUserHasCopiedSince_TheCopyStaysWithItsOwner) {
    write(QStringLiteral("своё"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("своё")));
    copyInAnotherProgram(QStringLiteral("новое"));
    X11Connection x;
    const xcb_window_t owner = x.ownerOf(x.atom("CLIPBOARD"));
    m_queue.reset();

    EXPECT_EQ(x.ownerOf(x.atom("CLIPBOARD")), owner);
}

TEST_F(Clipboard, NoServer_ThereIsNoQueue) {
    EXPECT_EQ(X11PasteQueue::open(m_loop, {.display = ":987"}), nullptr);
}

TEST(ClipboardEncoding, Contents_ComeOutAsTheyWentIn) {
    const ClipboardContents contents{.forms = {{"text/html", "<b>"}, {"image/png", QByteArray("\0\1", 2)}},
                                     .secret = true};
    EXPECT_EQ(decodeClipboard(encodeClipboard(contents)), contents);
}

TEST(ClipboardEncoding, BytesAreCutOff_AreNoContents) {
    const QByteArray bytes = encodeClipboard({.forms = {{"text/html", "<b>чужое</b>"}}});
    for (qsizetype size = 0; size < bytes.size(); ++size)
        EXPECT_EQ(decodeClipboard(bytes.left(size)), std::nullopt) << size;
}

} // namespace
} // namespace velmora::test
