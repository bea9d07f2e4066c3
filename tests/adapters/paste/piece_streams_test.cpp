#include "paste_desktop.h"
#include "support/desktop/physical_keyboard.h"
#include "support/desktop/target_application.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

struct Program {
    const char* name;
    std::function<std::unique_ptr<TargetApplication>()> start;
};

void PrintTo(const Program& program, std::ostream* out) {
    *out << program.name;
}

const Program programs[] = {
    {"Mousepad", &TargetApplication::mousepad},
    {"QtEditor", [] { return TargetApplication::qtEditor(QStringLiteral(QT_EDITOR)); }},
    {"Xterm", &TargetApplication::xterm},
    {"Chromium", &TargetApplication::chromium},
};

class PieceStreams : public PasteDesktop, public testing::WithParamInterface<Program> {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_queue);
        m_target = GetParam().start();
        ASSERT_TRUE(m_target->isReady());
    }

    PhysicalKeyboard m_keyboard;
    std::unique_ptr<TargetApplication> m_target;
};

TEST_P(PieceStreams, TwentyFivePiecesAtOnce_ArriveInOrder) {
    const QString all = pasteNumberedPieces(25);
    settle();

    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

TEST_P(PieceStreams, HundredPiecesAtTheirPace_ArriveInOrder) {
    const QString all = pasteNumberedPieces(100, 20ms);
    settle();

    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
    EXPECT_TRUE(m_undelivered.isEmpty());
}

TEST_P(PieceStreams, TargetFreezesAgainAndAgain_NothingIsLostOrDoubled) {
    const Timer freezing = m_loop.every(1200ms, [this] {
        m_target->freeze();
        m_loop.delay(400ms, [this] { m_target->thaw(); });
    });
    const QString all = pasteNumberedPieces(100, 30ms);
    settle();

    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

TEST_P(PieceStreams, RussianLayoutIsActive_PiecesArrive) {
    m_keyboard.setLayouts("us,ru", 1);
    const QString all = pasteNumberedPieces(5);
    settle();
    m_keyboard.setLayouts("us");

    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

TEST_P(PieceStreams, RussianIsTheFirstAndActiveLayout_PiecesArrive) {
    m_keyboard.setLayouts("ru,us");
    const QString all = pasteNumberedPieces(5);
    settle();
    m_keyboard.setLayouts("us");

    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

TEST_P(PieceStreams, RussianIsTheOnlyLayout_PiecesArrive) {
    m_keyboard.setLayouts("ru");
    const QString all = pasteNumberedPieces(5);
    settle();
    m_keyboard.setLayouts("us");

    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

TEST_P(PieceStreams, LetterKeysAreElsewhere_PiecesArrive) {
    m_keyboard.setLayouts("us(dvorak)");
    const QString all = pasteNumberedPieces(5);
    settle();
    m_keyboard.setLayouts("us");

    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

TEST_P(PieceStreams, ModifiersAreHeld_PiecesArriveAndTheKeysStayDown) {
    QString all;
    for (const xcb_keycode_t held :
         {key::leftShift, key::leftControl, key::rightControl, key::leftAlt, key::leftSuper}) {
        m_keyboard.press(held);
        const uint16_t modifiers = m_keyboard.modifiers();
        all += pasteNumberedPieces(2);
        settle();

        EXPECT_TRUE(m_keyboard.isDown(held));
        EXPECT_EQ(m_keyboard.modifiers(), modifiers);
        m_keyboard.release(held);
        EXPECT_FALSE(m_keyboard.isDown(held));
        EXPECT_EQ(m_keyboard.modifiers(), 0);
    }
    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

TEST_P(PieceStreams, CapsLockIsOn_PiecesArriveAndItStaysOn) {
    m_keyboard.tap(key::capsLock);
    const QString all = pasteNumberedPieces(2);
    settle();

    EXPECT_EQ(m_keyboard.modifiers(), XCB_MOD_MASK_LOCK);
    m_keyboard.tap(key::capsLock);
    EXPECT_EQ(m_target->document(all).toStdString(), all.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Programs, PieceStreams, testing::ValuesIn(programs),
                         [](const auto& one) { return std::string(one.param.name); });

} // namespace
} // namespace velmora::test
