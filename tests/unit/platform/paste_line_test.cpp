#include "platform/paste_line.h"
#include "support/fake_paste_system.h"
#include "support/hand_loop.h"

#include <gmock/gmock.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kept = Pasteboard::Saved(1);
constexpr PasteTarget editor{.window = 1, .client = 10};
constexpr PasteTarget other{.window = 2, .client = 20};
constexpr PasteTarget terminal{.window = 3, .client = 30, .isTerminal = true};

ClipboardContents text(const char* utf8) {
    return ClipboardContents::ofText(utf8);
}

class PasteLineTest : public testing::Test {
protected:
    PasteLineTest() {
        m_line.onUndelivered([this](const QString& undelivered) { m_undelivered << undelivered; });
        m_line.beginText();
    }

    // The target reads what is up, and goes back to its events.
    void read(quint64 client = editor.client) {
        m_line.answered(client, m_system.number, true);
        m_line.taken(client, m_system.number);
    }
    void readAndSettle(quint64 client = editor.client) {
        read(client);
        m_loop.advance(500ms);
    }
    // It has come back to its events so often.
    void pong(int times) {
        for (int time = 0; time < times; ++time) {
            m_loop.advance(60ms);
            m_line.ponged(editor.window);
        }
        m_loop.advance(0ms);
    }
    void learnOneRead() {
        m_system.hasPings = true;
        m_line.paste(QStringLiteral("ноль "));
        read();
        pong(5);
        ASSERT_TRUE(m_line.isIdle());
    }
    // With what a user has copied before.
    void beginWithClipboard(const ClipboardContents& contents) {
        m_system.copyElsewhere(contents);
        m_line.save(kept);
    }

    // "прежнее" is kept, and the first piece, "раз ", has been read.
    void borrowForAPiece() {
        beginWithClipboard(text("прежнее"));
        m_line.paste(QStringLiteral("раз "));
        readAndSettle();
    }

    HandLoop m_loop;
    FakePasteSystem m_system;
    PasteLine m_line{m_loop, m_system};
    QStringList m_undelivered;
};

// ------------------------------------------------------------------------------------- joining

TEST_F(PasteLineTest, Piece_IsPutUpAndPostedAtOnce) {
    m_line.paste(QStringLiteral("раз "));
    EXPECT_EQ(m_system.pasted, QStringList{QStringLiteral("раз ")});
    EXPECT_TRUE(m_system.clipboard.secret);
}

TEST_F(PasteLineTest, PiecesWhileOneIsUp_ArePastedInOneGo) {
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    m_line.paste(QStringLiteral("три "));
    m_loop.advance(500ms);
    EXPECT_EQ(m_system.chords, 1);
    readAndSettle();
    EXPECT_EQ(m_system.pasted, (QStringList{QStringLiteral("раз "), QStringLiteral("два три ")}));
}

TEST_F(PasteLineTest, LongText_GoesInBoundedPortionsBetweenCharacters) {
    // A letter with its accent beside it lies across the bound.
    const QString accented = QStringLiteral("e") + QChar(0x301);
    const QString all =
        QString(32 * 1024 - 1, QLatin1Char('x')) + accented + QString(40'000, QLatin1Char('y'));
    m_line.paste(all);
    while (!m_line.isIdle())
        readAndSettle();
    ASSERT_EQ(m_system.pasted.size(), 3);
    EXPECT_EQ(m_system.pasted[0].size(), 32 * 1024 - 1);
    EXPECT_LE(m_system.pasted[1].size(), 32 * 1024);
    EXPECT_EQ(m_system.pasted.join(QString()), all);
}

TEST_F(PasteLineTest, PieceForAnotherWindow_IsNotJoined) {
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    m_system.focus = other;
    m_line.paste(QStringLiteral("три "));
    m_system.focus = editor;
    readAndSettle();
    EXPECT_EQ(m_system.pasted, (QStringList{QStringLiteral("раз "), QStringLiteral("два ")}));
}

// ------------------------------------------------------------------------------------- whose it is

TEST_F(PasteLineTest, FocusMovesWhilePiecesWait_TheyGoNowhereAndAreReported) {
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    m_line.paste(QStringLiteral("три "));
    m_system.focus = other;
    readAndSettle();
    EXPECT_EQ(m_system.pasted, QStringList{QStringLiteral("раз ")});
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("два три ")});
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
}

TEST_F(PasteLineTest, LineOfOneWindowEnds_PiecesOfTheNextStillArrive) {
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    m_system.focus = other;
    m_line.paste(QStringLiteral("три "));
    m_line.putBack(kept);
    readAndSettle();
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("два ")});
    EXPECT_EQ(m_system.pasted, (QStringList{QStringLiteral("раз "), QStringLiteral("три ")}));
    EXPECT_EQ(m_system.clipboard, ClipboardContents::ofPiece("три ")) << "not given back in between";
    readAndSettle(other.client);
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
}

TEST_F(PasteLineTest, FocusMovesAtTheLastMoment_NoKeyIsPosted) {
    beginWithClipboard(text("прежнее"));
    m_system.beforeChord = [this] { m_system.focus = other; };
    m_line.paste(QStringLiteral("раз "));
    m_loop.advance(5s);
    EXPECT_EQ(m_system.chords, 0);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("раз ")});
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
    EXPECT_EQ(m_loop.pendingTimers(), 0U);
}

TEST_F(PasteLineTest, FocusMovesOn_LaterPiecesGoToTheNewWindow) {
    m_line.paste(QStringLiteral("раз "));
    readAndSettle();
    m_system.focus = other;
    m_line.paste(QStringLiteral("два "));
    EXPECT_EQ(m_system.pasted, (QStringList{QStringLiteral("раз "), QStringLiteral("два ")}));
    EXPECT_TRUE(m_undelivered.isEmpty());
}

TEST_F(PasteLineTest, FocusComesBack_TheRestOfTheTextIsNotTyped) {
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    m_system.focus = other;
    readAndSettle();
    m_system.focus = editor;
    m_line.paste(QStringLiteral("три "));
    m_loop.advance(10s);
    EXPECT_EQ(m_system.chords, 1);
    EXPECT_EQ(m_undelivered, (QStringList{QStringLiteral("два "), QStringLiteral("три ")}));
}

TEST_F(PasteLineTest, NoWindowHasTheFocus_PieceIsReportedAndTheClipboardUntouched) {
    beginWithClipboard(text("прежнее"));
    m_system.focus.reset();
    m_line.paste(QStringLiteral("раз "));
    m_line.putBack(kept);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("раз ")});
    EXPECT_FALSE(m_system.isOurs);
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
}

// ------------------------------------------------------------------------------------- a window that doesn't
// read

TEST_F(PasteLineTest, NobodyReads_LineEndsASecondAfterTheFirstChord) {
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    m_loop.advance(999ms);
    EXPECT_TRUE(m_undelivered.isEmpty());
    m_loop.advance(1ms);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("раз два ")});
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
    m_line.paste(QStringLiteral("три "));
    m_loop.advance(10s);
    EXPECT_EQ(m_system.chords, 1);
    EXPECT_EQ(m_undelivered, (QStringList{QStringLiteral("раз два "), QStringLiteral("три ")}));
}

TEST_F(PasteLineTest, NobodyReadsAndTheOwnerIsSlow_ClipboardIsBackWithItsAnswer) {
    m_system.answersAtOnce = false;
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_loop.advance(1150ms);
    EXPECT_EQ(m_system.clipboard, ClipboardContents::ofPiece("раз "));
    m_system.finishFetch();
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
}

TEST_F(PasteLineTest, NobodyReads_NextTextTriesAgain) {
    m_line.paste(QStringLiteral("раз "));
    m_loop.advance(1s);
    m_line.beginText();
    m_line.paste(QStringLiteral("два "));
    EXPECT_EQ(m_system.chords, 2);
}

TEST_F(PasteLineTest, WindowThatHasRead_IsGivenLonger) {
    m_line.paste(QStringLiteral("раз "));
    readAndSettle();
    m_line.paste(QStringLiteral("два "));
    m_loop.advance(1499ms);
    EXPECT_TRUE(m_undelivered.isEmpty());
    m_loop.advance(1ms);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("два ")});
}

TEST_F(PasteLineTest, NextText_BeginsWithTheShorterPatience) {
    m_line.paste(QStringLiteral("раз "));
    readAndSettle();
    m_line.beginText();
    m_line.paste(QStringLiteral("два "));
    m_loop.advance(1s);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("два ")});
}

TEST_F(PasteLineTest, AnotherProgramReads_IsNotTakenForTheTarget) {
    m_line.paste(QStringLiteral("раз "));
    m_line.answered(99, m_system.number, true);
    m_line.taken(99, m_system.number);
    m_loop.advance(1s);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("раз ")});
}

TEST_F(PasteLineTest, TargetReadsAnEarlierPiece_IsNotTakenForThisOne) {
    m_line.paste(QStringLiteral("раз "));
    const quint64 first = m_system.number;
    readAndSettle();
    m_line.paste(QStringLiteral("два "));
    m_line.answered(editor.client, first, true);
    m_line.taken(editor.client, first);
    m_loop.advance(1500ms);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("два ")});
}

TEST_F(PasteLineTest, TargetAsksOnlyWhatThereIs_HasNotRead) {
    m_line.paste(QStringLiteral("раз "));
    m_line.answered(editor.client, m_system.number, false);
    m_line.taken(editor.client, m_system.number);
    m_loop.advance(1s);
    EXPECT_EQ(m_undelivered, QStringList{QStringLiteral("раз ")});
}

// ------------------------------------------------------------------------------------- when it is through

TEST_F(PasteLineTest, AnswersPings_NextPieceAfterThreePongsWithoutAQuestion) {
    learnOneRead();
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    read();
    pong(2);
    m_line.answered(editor.client, m_system.number, false); // it asks on: from the beginning
    m_line.taken(editor.client, m_system.number);
    pong(2);
    EXPECT_EQ(m_system.chords, 2);
    pong(1);
    EXPECT_EQ(m_system.chords, 3);
}

TEST_F(PasteLineTest, FirstPieceInAWindow_WaitsForMorePongs) {
    m_system.hasPings = true;
    m_line.paste(QStringLiteral("раз "));
    read();
    pong(4);
    EXPECT_FALSE(m_line.isIdle());
    pong(1);
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, AnswerIsNotFetched_PongTellsThatItWasSeen) {
    learnOneRead();
    m_line.paste(QStringLiteral("раз "));
    m_line.answered(editor.client, m_system.number, true);
    m_loop.advance(39ms);
    EXPECT_EQ(m_system.pings, 5) << "those of the first piece";
    m_loop.advance(1ms);
    EXPECT_EQ(m_system.pings, 6) << "one that wakes it";
    m_line.ponged(editor.window);
    pong(2);
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, PongOfAPingBeforeTheAnswer_TellsNothing) {
    learnOneRead();
    m_line.paste(QStringLiteral("раз "));
    read();
    m_loop.advance(20ms); // a ping is under way
    m_line.answered(editor.client, m_system.number, true);
    m_line.ponged(editor.window);
    pong(2);
    EXPECT_FALSE(m_line.isIdle()) << "one of the two told that the answer was seen";
    pong(1);
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, TargetIsFrozenAfterItsRead_NextPieceWaits) {
    learnOneRead();
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    read();
    m_loop.advance(1400ms);
    EXPECT_EQ(m_system.chords, 2);
    m_line.ponged(editor.window);
    pong(2);
    EXPECT_EQ(m_system.chords, 3);
}

TEST_F(PasteLineTest, ClaimsToAnswerPingsAndDoesNot_IsLeftAloneAfterTheFirst) {
    m_system.hasPings = true;
    m_line.paste(QStringLiteral("раз "));
    read();
    m_loop.advance(599ms);
    EXPECT_FALSE(m_line.isIdle());
    m_loop.advance(1ms);
    EXPECT_TRUE(m_line.isIdle());
    m_line.paste(QStringLiteral("два "));
    read();
    m_loop.advance(60ms);
    EXPECT_TRUE(m_line.isIdle());
    EXPECT_EQ(m_system.pings, 1);
}

TEST_F(PasteLineTest, AnswersPingsOnlyAfterAll_IsPingedAgain) {
    m_system.hasPings = true;
    m_line.paste(QStringLiteral("раз "));
    readAndSettle();
    m_loop.advance(100ms);
    m_line.ponged(editor.window); // it was frozen
    m_line.paste(QStringLiteral("два "));
    read();
    m_loop.advance(100ms);
    EXPECT_FALSE(m_line.isIdle());
    EXPECT_EQ(m_system.pings, 2);
}

TEST_F(PasteLineTest, HasAnsweredPingsAndIsFrozenForLong_IsPingedAgain) {
    learnOneRead();
    m_line.paste(QStringLiteral("раз "));
    read();
    m_loop.advance(2s);
    ASSERT_TRUE(m_line.isIdle());
    const int before = m_system.pings;
    m_line.paste(QStringLiteral("два "));
    read();
    m_loop.advance(100ms);
    EXPECT_FALSE(m_line.isIdle());
    EXPECT_EQ(m_system.pings, before + 1);
}

TEST_F(PasteLineTest, FewerQuestionsThanUsual_WaitsForMorePongs) {
    learnOneRead();
    m_line.paste(QStringLiteral("раз "));
    read();
    read();
    pong(3);
    ASSERT_TRUE(m_line.isIdle());
    m_line.paste(QStringLiteral("два "));
    read();
    pong(7);
    EXPECT_FALSE(m_line.isIdle());
    read();
    pong(3);
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, FewerQuestionsThreeTimes_AreTheNewHabit) {
    learnOneRead();
    const auto pasteAndRead = [this](int reads, int pongs) {
        m_line.paste(QStringLiteral("раз "));
        for (int each = 0; each < reads; ++each)
            read();
        pong(pongs);
    };
    pasteAndRead(2, 3);
    for (int time = 0; time < 3; ++time)
        pasteAndRead(1, 8);
    pasteAndRead(1, 3);
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, FewerQuestionsNowAndThen_AreNoNewHabit) {
    learnOneRead();
    const auto pasteAndRead = [this](int reads, int pongs) {
        m_line.paste(QStringLiteral("раз "));
        for (int each = 0; each < reads; ++each)
            read();
        pong(pongs);
    };
    pasteAndRead(2, 3);
    for (const int reads : {1, 1, 2, 1, 1})
        pasteAndRead(reads, 8);
    pasteAndRead(1, 3);
    EXPECT_FALSE(m_line.isIdle());
}

TEST_F(PasteLineTest, HabitIsKeptForTheNextText) {
    learnOneRead();
    m_line.beginText();
    m_line.paste(QStringLiteral("раз "));
    read();
    pong(3);
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, NoPings_NextPieceAfterAQuietOfTwiceItsPauses) {
    m_line.paste(QStringLiteral("раз "));
    readAndSettle(); // how often it asks is known from here on
    m_line.paste(QStringLiteral("два "));
    m_line.paste(QStringLiteral("три "));
    read();
    m_loop.advance(50ms);
    read();
    m_loop.advance(99ms);
    EXPECT_EQ(m_system.chords, 2);
    m_loop.advance(1ms);
    EXPECT_EQ(m_system.chords, 3);
}

TEST_F(PasteLineTest, NoPings_IsNeverSentAny) {
    m_line.paste(QStringLiteral("раз "));
    readAndSettle();
    m_line.paste(QStringLiteral("два "));
    m_line.answered(editor.client, m_system.number, true);
    m_loop.advance(1s);
    m_line.taken(editor.client, m_system.number);
    m_loop.advance(1s);
    EXPECT_EQ(m_system.pings, 0);
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, NoPingsAndFewerQuestionsThanUsual_NextPieceAfterHalfASecond) {
    m_line.paste(QStringLiteral("раз "));
    read();
    readAndSettle();
    m_line.paste(QStringLiteral("два "));
    m_line.paste(QStringLiteral("три "));
    read();
    m_loop.advance(499ms);
    EXPECT_EQ(m_system.chords, 2);
    m_loop.advance(1ms);
    EXPECT_EQ(m_system.chords, 3);
}

TEST_F(PasteLineTest, NoPingsAndAnAnswerIsNotFetched_NextPieceWaits) {
    m_line.paste(QStringLiteral("раз "));
    readAndSettle(); // it shows what it has fetched
    m_line.paste(QStringLiteral("два "));
    m_line.paste(QStringLiteral("три "));
    m_loop.advance(400ms);
    m_line.answered(editor.client, m_system.number, true);
    m_loop.advance(1499ms);
    EXPECT_EQ(m_system.chords, 2);
    m_loop.advance(1ms);
    EXPECT_EQ(m_system.chords, 3);
}

TEST_F(PasteLineTest, NeverFetchesVisibly_IsThroughAllTheSame) {
    m_line.paste(QStringLiteral("раз "));
    m_line.answered(editor.client, m_system.number, true);
    m_loop.advance(300ms);
    m_line.paste(QStringLiteral("два "));
    m_line.answered(editor.client, m_system.number, true);
    m_loop.advance(60ms);
    EXPECT_TRUE(m_line.isIdle());
    EXPECT_TRUE(m_undelivered.isEmpty());
}

TEST_F(PasteLineTest, GoesOnAskingForEver_LineGoesOnAfterFiveSeconds) {
    m_system.hasPings = true;
    m_line.paste(QStringLiteral("раз "));
    m_line.paste(QStringLiteral("два "));
    for (int question = 0; question < 700 && m_system.chords == 1; ++question) {
        read();
        m_loop.advance(10ms);
    }
    EXPECT_EQ(m_system.chords, 2);
}

// ------------------------------------------------------------------------------------- terminals

TEST_F(PasteLineTest, TerminalPieceEndsWithALineBreak_ItComesWithTheNextPiece) {
    m_system.focus = terminal;
    m_line.paste(QStringLiteral("раз\n"));
    readAndSettle(terminal.client);
    m_line.paste(QStringLiteral("два\r\n"));
    readAndSettle(terminal.client);
    m_line.paste(QStringLiteral("\n"));
    m_line.paste(QStringLiteral("три\n\n"));
    readAndSettle(terminal.client);
    EXPECT_EQ(m_system.pasted,
              (QStringList{QStringLiteral("раз"), QStringLiteral("\nдва"), QStringLiteral("\r\n\nтри")}));
}

TEST_F(PasteLineTest, TerminalTextEndsWithALineBreak_NextTextBeginsWithoutIt) {
    m_system.focus = terminal;
    m_line.paste(QStringLiteral("раз\n"));
    readAndSettle(terminal.client);
    m_line.beginText();
    m_line.paste(QStringLiteral("два"));
    EXPECT_EQ(m_system.pasted, (QStringList{QStringLiteral("раз"), QStringLiteral("два")}));
}

TEST_F(PasteLineTest, EditorPieceEndsWithALineBreak_ItComesAtOnce) {
    m_line.paste(QStringLiteral("раз\n"));
    EXPECT_EQ(m_system.pasted, QStringList{QStringLiteral("раз\n")});
}

// ------------------------------------------------------------------------------------- the user's clipboard

TEST_F(PasteLineTest, PutBack_EveryFormComesBackAfterThePieces) {
    ClipboardContents rich = text("прежнее");
    rich.forms.push_back({"text/html", "<b>прежнее</b>"});
    beginWithClipboard(rich);
    m_line.paste(QStringLiteral("раз "));
    m_line.putBack(kept);
    m_loop.advance(10ms);
    EXPECT_EQ(m_system.clipboard, ClipboardContents::ofPiece("раз "));
    readAndSettle();
    EXPECT_EQ(m_system.clipboard, rich);
    EXPECT_EQ(m_system.givenBack, 1);
}

TEST_F(PasteLineTest, ClipboardWasEmpty_IsEmptyAgain) {
    m_line.save(kept);
    m_line.paste(QStringLiteral("раз "));
    m_line.putBack(kept);
    readAndSettle();
    EXPECT_TRUE(m_system.clipboard.isEmpty());
}

TEST_F(PasteLineTest, OwnerAnswersLate_FirstPieceWaits150msAndNoLonger) {
    m_system.answersAtOnce = false;
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_loop.advance(149ms);
    EXPECT_EQ(m_system.chords, 0);
    m_loop.advance(1ms);
    EXPECT_EQ(m_system.chords, 1);
}

TEST_F(PasteLineTest, OwnerAnswersSoon_FirstPieceGoesAtOnce) {
    m_system.answersAtOnce = false;
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_loop.advance(5ms);
    m_system.finishFetch();
    EXPECT_EQ(m_system.chords, 1);
}

TEST_F(PasteLineTest, OwnerAnswersAfterThePieces_PutBackWaitsForIt) {
    m_system.answersAtOnce = false;
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_loop.advance(150ms);
    m_line.putBack(kept);
    readAndSettle();
    EXPECT_EQ(m_system.clipboard, ClipboardContents::ofPiece("раз "));
    m_system.finishFetch();
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
}

TEST_F(PasteLineTest, SavedWhileAPieceIsUp_IsThatPiece) {
    borrowForAPiece();
    m_line.save(Pasteboard::Saved(2));
    m_line.paste(QStringLiteral("два "));
    readAndSettle();
    m_line.putBack(Pasteboard::Saved(2));
    EXPECT_EQ(*m_system.clipboard.text(), "раз ");
    m_line.putBack(kept);
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
}

TEST_F(PasteLineTest, UserCopiesBetweenPieces_TheCopyIsPutBack) {
    borrowForAPiece();
    m_system.copyElsewhere(text("новое"));
    m_line.paste(QStringLiteral("два "));
    EXPECT_EQ(m_system.pasted.last(), QStringLiteral("два "));
    m_line.putBack(kept);
    readAndSettle();
    EXPECT_EQ(m_system.clipboard, text("новое"));
    EXPECT_TRUE(m_system.isOurs);
}

TEST_F(PasteLineTest, UserCopiesBetweenPiecesAndItsOwnerIsSlow_NextPieceWaitsForIt) {
    borrowForAPiece();
    m_system.answersAtOnce = false;
    m_system.copyElsewhere(text("новое"));
    m_line.paste(QStringLiteral("два "));
    m_loop.advance(149ms);
    EXPECT_EQ(m_system.chords, 1);
    m_loop.advance(1ms);
    EXPECT_EQ(m_system.chords, 2);
}

TEST_F(PasteLineTest, UserCopiesBeforeTheFirstPieceIsUp_TheCopyIsPutBack) {
    m_system.answersAtOnce = false;
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_system.copyElsewhere(text("новое"));
    m_line.copiedElsewhere();
    m_loop.advance(150ms);
    m_system.finishFetch();
    EXPECT_EQ(m_system.chords, 1);
    m_line.putBack(kept);
    m_system.fetches.front().fetched->isComplete = true;
    readAndSettle();
    EXPECT_EQ(m_system.clipboard, text("новое"));
}

TEST_F(PasteLineTest, UserCopiesBeforeThePutBack_TheCopyStaysWithItsOwner) {
    borrowForAPiece();
    m_system.copyElsewhere(text("новое"));
    m_line.putBack(kept);
    EXPECT_EQ(m_system.clipboard, text("новое"));
    EXPECT_FALSE(m_system.isOurs);
    EXPECT_EQ(m_system.givenBack, 1);
}

TEST_F(PasteLineTest, UserCopiesBeforeTheTargetReads_PieceIsUpAgainOnceAndTheCopyComesBack) {
    beginWithClipboard(text("прежнее"));
    m_line.paste(QStringLiteral("раз "));
    m_system.copyElsewhere(text("новое"));
    m_line.copiedElsewhere();
    EXPECT_EQ(m_system.clipboard, ClipboardContents::ofPiece("раз "));
    EXPECT_EQ(m_system.chords, 1);
    m_line.putBack(kept);
    readAndSettle();
    EXPECT_EQ(m_system.clipboard, text("новое"));
}

TEST_F(PasteLineTest, ProgramThatWasCopiedInAnswersLate_PutBackWaitsForIt) {
    m_system.answersAtOnce = false;
    beginWithClipboard(text("прежнее"));
    m_system.finishFetch();
    m_line.paste(QStringLiteral("раз "));
    m_system.copyElsewhere(text("новое"));
    m_line.copiedElsewhere();
    m_line.putBack(kept);
    readAndSettle();
    m_system.finishFetch();
    EXPECT_EQ(m_system.clipboard, text("новое"));
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, TwoProgramsFightForTheClipboard_LineTakesItBackOnce) {
    m_line.paste(QStringLiteral("раз "));
    for (int time = 0; time < 2; ++time) {
        m_system.copyElsewhere(text("новое"));
        m_line.copiedElsewhere();
    }
    EXPECT_EQ(m_system.number, 2U) << "put up, and put up again";
    EXPECT_EQ(m_system.clipboard, text("новое"));
}

TEST_F(PasteLineTest, ClipboardManagerPutsThePieceUpAgain_UsersTextComesBack) {
    borrowForAPiece();
    m_system.copyElsewhere(text("раз "));
    m_line.putBack(kept);
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
}

TEST_F(PasteLineTest, UserCopiesFromTheHistoryMeanwhile_ThatStays) {
    borrowForAPiece();
    m_line.write(QStringLiteral("раз "));
    m_line.putBack(kept);
    EXPECT_EQ(m_system.clipboard, text("раз "));
}

TEST_F(PasteLineTest, WhatWasPutBack_IsForgotten) {
    borrowForAPiece();
    m_line.putBack(kept);
    m_line.beginText();
    m_line.paste(QStringLiteral("два "));
    m_loop.advance(1s); // nobody reads
    EXPECT_EQ(m_system.clipboard, ClipboardContents::ofPiece("два ")) << "nothing is there to be given back";
}

TEST_F(PasteLineTest, PutBackOfWhatWasNeverKept_DoesNothing) {
    m_system.copyElsewhere(text("прежнее"));
    m_line.putBack(Pasteboard::Saved(7));
    EXPECT_EQ(m_system.clipboard, text("прежнее"));
    EXPECT_TRUE(m_line.isIdle());
}

TEST_F(PasteLineTest, ChordAlone_IsPostedForWhatIsThere) {
    m_system.copyElsewhere(text("прежнее"));
    m_line.pasteClipboard();
    EXPECT_EQ(m_system.pasted, QStringList{QStringLiteral("прежнее")});
    EXPECT_FALSE(m_system.isOurs);
}

// ------------------------------------------------------------------------------------- the program ends

TEST_F(PasteLineTest, EverythingIsDone_IsToldThenAndNotBefore) {
    int idle = 0;
    m_line.onIdle([&] {
        EXPECT_TRUE(m_line.isIdle());
        ++idle;
    });
    m_line.paste(QStringLiteral("раз "));
    read();
    EXPECT_EQ(idle, 0);
    m_loop.advance(500ms);
    EXPECT_EQ(idle, 1);
}

TEST_F(PasteLineTest, EndsBeforeThePutBack_LeavesTheUsersClipboard) {
    borrowForAPiece();
    EXPECT_EQ(m_line.whatToLeave(), text("прежнее"));
}

TEST_F(PasteLineTest, EndsWithTwoToPutBack_LeavesTheOlder) {
    borrowForAPiece();
    m_line.save(Pasteboard::Saved(2));
    m_line.paste(QStringLiteral("два "));
    readAndSettle();
    EXPECT_EQ(m_line.whatToLeave(), text("прежнее"));
}

TEST_F(PasteLineTest, EndsWithAnotherProgramsCopy_LeavesIt) {
    borrowForAPiece();
    m_system.copyElsewhere(text("новое"));
    EXPECT_EQ(m_line.whatToLeave(), std::nullopt);
}

TEST_F(PasteLineTest, EndsWithATextForTheUser_LeavesIt) {
    borrowForAPiece();
    m_line.putBack(kept);
    m_line.write(QStringLiteral("из истории"));
    EXPECT_EQ(m_line.whatToLeave(), text("из истории"));
}

TEST_F(PasteLineTest, EndsWithAPieceUpAndNothingKept_LeavesNothing) {
    m_line.paste(QStringLiteral("раз "));
    readAndSettle();
    EXPECT_EQ(m_line.whatToLeave(), ClipboardContents());
}

} // namespace
} // namespace velmora::test
