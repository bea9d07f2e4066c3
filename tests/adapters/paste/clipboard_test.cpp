#include "clipboard_manager.h"
#include "paste_desktop.h"
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

// Programs that ask us need the loop of this thread no more than those we ask: compare without printing.
testing::AssertionResult isSame(const std::optional<QString>& actual, const QString& expected) {
    if (actual == expected)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "got " << (actual ? actual->size() : -1) << " characters instead of " << expected.size();
}

TEST_F(Clipboard, AnotherProgramHasCopied_StringIsItsText) {
    copyInAnotherProgram(QStringLiteral("чужое"));
    EXPECT_EQ(m_queue->string(), QStringLiteral("чужое"));
}

TEST_F(Clipboard, AnotherProgramHasOnlyLatinText_StringIsThat) {
    copyInAnotherProgram(QStringLiteral("plain"), "STRING");
    EXPECT_EQ(m_queue->string(), QStringLiteral("plain"));
}

TEST_F(Clipboard, NobodyHasCopied_StringIsNone) {
    EXPECT_EQ(m_queue->string(), std::nullopt);
}

TEST_F(Clipboard, OnlyAnImageIsThere_StringIsNone) {
    copyInAnotherProgram(QStringLiteral("not really a picture"), "image/png");
    EXPECT_EQ(m_queue->string(), std::nullopt);
}

TEST_F(Clipboard, OwnerNeverAnswers_StringIsNone) {
    X11Connection silent;
    const xcb_window_t window = silent.createWindow(XCB_EVENT_MASK_NO_EVENT);
    xcb_set_selection_owner(silent.get(), window, silent.atom("CLIPBOARD"), XCB_CURRENT_TIME);
    ASSERT_EQ(silent.ownerOf(silent.atom("CLIPBOARD")), window);

    EXPECT_EQ(m_queue->string(), std::nullopt);
}

TEST_F(Clipboard, TextIsWritten_OthersReadItInEveryFormAtOnce) {
    m_queue->setString(QStringLiteral("своё"));
    EXPECT_EQ(m_queue->string(), QStringLiteral("своё"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("своё")));

    EXPECT_EQ(readInAnotherProgram("UTF8_STRING"), QStringLiteral("своё"));
    EXPECT_EQ(readInAnotherProgram("text/plain;charset=utf-8"), QStringLiteral("своё"));
    EXPECT_EQ(readInAnotherProgram("TEXT"), QStringLiteral("своё"));
    EXPECT_EQ(readInAnotherProgram("image/png"), QString());
}

TEST_F(Clipboard, LatinTextIsWritten_OldProgramsReadIt) {
    m_queue->setString(QStringLiteral("plain"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("plain")));
    EXPECT_EQ(readInAnotherProgram("STRING"), QStringLiteral("plain"));
}

TEST_F(Clipboard, Cleared_NobodyOwnsIt) {
    copyInAnotherProgram(QStringLiteral("чужое"));
    m_queue->clearContents();
    EXPECT_EQ(m_queue->string(), std::nullopt);

    X11Connection x;
    EXPECT_TRUE(waitUntil([&] { return x.ownerOf(x.atom("CLIPBOARD")) == XCB_WINDOW_NONE; }));
}

TEST_F(Clipboard, ClearedAndWrittenAgain_IsNeverWithoutOwner) {
    m_queue->setString(QStringLiteral("первое"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("первое")));
    X11Connection x;
    const xcb_window_t owner = x.ownerOf(x.atom("CLIPBOARD"));
    m_queue->clearContents();
    m_queue->setString(QStringLiteral("второе"));

    EXPECT_TRUE(waitUntil([&] {
        EXPECT_EQ(x.ownerOf(x.atom("CLIPBOARD")), owner);
        return m_reader.read("CLIPBOARD") == QStringLiteral("второе");
    }));
}

TEST_F(Clipboard, AnotherProgramHasCopiedMegabytes_StringIsAllOfIt) {
    const QString text = bigText();
    copyInAnotherProgram(text);
    EXPECT_TRUE(isSame(m_queue->string(), text));
}

TEST_F(Clipboard, MegabytesAreWritten_SeveralReadersAtOnceGetAllOfIt) {
    const QString text = bigText();
    m_queue->setString(text);
    ASSERT_TRUE(waitForClipboard(text));

    QProcess readers[3];
    for (QProcess& reader : readers)
        reader.start(QStringLiteral("xclip"),
                     {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
    for (QProcess& reader : readers) {
        ASSERT_TRUE(waitUntil([&] { return reader.state() == QProcess::NotRunning; }));
        EXPECT_TRUE(isSame(QString::fromUtf8(reader.readAllStandardOutput()), text));
    }
}

TEST_F(Clipboard, AnotherProgramCopiesLater_StringIsItsText) {
    m_queue->setString(QStringLiteral("своё"));
    ASSERT_TRUE(waitForClipboard(QStringLiteral("своё")));
    copyInAnotherProgram(QStringLiteral("чужое"));

    EXPECT_EQ(m_queue->string(), QStringLiteral("чужое"));
}

TEST_F(Clipboard, QueueEnds_ClipboardManagerHasTheText) {
    ClipboardManager manager;
    m_queue->setString(QStringLiteral("останется"));
    m_queue.reset();

    EXPECT_EQ(manager.saved(), QStringLiteral("останется"));
}

TEST_F(Clipboard, NoServer_ThereIsNoQueue) {
    EXPECT_EQ(X11PasteQueue::open(m_loop, {.display = ":987"}), nullptr);
}

} // namespace
} // namespace velmora::test
