#include "core/text_injector.h"
#include "support/fake_desktop.h"
#include "support/hand_loop.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

class TextInjectorTest : public testing::Test {
protected:
    HandLoop loop;
    FakeDesktop desktop;
    TextInjector injector{loop, desktop, desktop};
    const QString mine = QStringLiteral("моё");
    const QString spoken = QStringLiteral("сказанное");
};

} // namespace

TEST_F(TextInjectorTest, Paste_PutsTheTextInAndTheClipboardBackAfter180ms) {
    desktop.clipboard = mine;
    injector.paste(spoken);
    EXPECT_EQ(desktop.pasted, QStringList{spoken});
    loop.advance(179ms);
    EXPECT_EQ(desktop.clipboard, spoken);
    loop.advance(1ms);
    EXPECT_EQ(desktop.clipboard, mine);
}

TEST_F(TextInjectorTest, Paste_EmptyClipboardBefore_IsEmptyAgain) {
    injector.paste(spoken);
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, std::nullopt);
}

TEST_F(TextInjectorTest, Paste_ImageOnTheClipboard_IsGoneAfterwards) {
    desktop.hasImage = true;
    injector.paste(spoken);
    loop.advance(1s);
    EXPECT_FALSE(desktop.hasImage);
    EXPECT_EQ(desktop.clipboard, std::nullopt);
}

TEST_F(TextInjectorTest, SecondPasteWithin180ms_IsReplacedByTheFirstOnesRestore) {
    desktop.clipboard = mine;
    injector.paste(QStringLiteral("a"));
    loop.advance(100ms);
    injector.paste(QStringLiteral("b"));
    loop.advance(80ms);
    EXPECT_EQ(desktop.clipboard, mine);
    loop.advance(100ms);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("a"));
}

TEST_F(TextInjectorTest, Session_PiecesPastedWithoutDelayAndTheClipboardPutBackAtTheEnd) {
    desktop.clipboard = mine;
    injector.startIncrementalSession();
    injector.pasteIncremental(QStringLiteral("a"));
    injector.pasteIncremental(QStringLiteral("b"));
    EXPECT_EQ(desktop.pasted, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    loop.advance(10s);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("b"));
    injector.finishIncrementalSession();
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, mine);
}

TEST_F(TextInjectorTest, PasteIncremental_NoSession_RestoresAfterEachPiece) {
    desktop.clipboard = mine;
    injector.pasteIncremental(QStringLiteral("a"));
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, mine);
    injector.pasteIncremental(QStringLiteral("b"));
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, mine);
    EXPECT_EQ(desktop.chords, 2);
}

TEST_F(TextInjectorTest, SecondStart_KeepsTheFirstSavedText) {
    desktop.clipboard = mine;
    injector.startIncrementalSession();
    injector.pasteIncremental(spoken);
    injector.startIncrementalSession();
    injector.finishIncrementalSession();
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, mine);
}

TEST_F(TextInjectorTest, FinishWithoutSession_DoesNothingAndSchedulesNothing) {
    desktop.clipboard = mine;
    injector.finishIncrementalSession();
    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(desktop.clipboard, mine);
}

TEST_F(TextInjectorTest, OneShotInAnOpenSession_RestoresTheLastPieceAndLeavesItOpen) {
    desktop.clipboard = mine;
    injector.startIncrementalSession();
    injector.pasteIncremental(QStringLiteral("piece"));
    injector.paste(QStringLiteral("whole"));
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("piece"));
    injector.finishIncrementalSession();
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, mine);
}

TEST_F(TextInjectorTest, CopyToClipboard_TypesNothingAndPutsNothingBack) {
    desktop.clipboard = mine;
    injector.copyToClipboard(spoken);
    loop.advance(1s);
    EXPECT_EQ(desktop.clipboard, spoken);
    EXPECT_EQ(desktop.chords, 0);
}
