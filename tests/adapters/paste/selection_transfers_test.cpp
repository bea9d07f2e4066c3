#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_selection_owner.h"
#include "support/desktop/wait_until.h"

namespace velmora::test {
namespace {

// An owner on this thread, and a reader that is worked by hand.
class SelectionTransfers : public testing::Test {
protected:
    bool pumpUntil(const std::function<bool()>& condition) {
        return waitUntil([&] {
            while (const XcbEvent event = m_x.nextEvent()) {
                m_owner.handle(*event);
                m_transfers.handle(*event);
            }
            m_x.flush();
            return condition();
        });
    }

    void ask(X11Connection& reader, xcb_window_t window, const char* target, const char* property) {
        xcb_convert_selection(reader.get(), window, reader.atom("VELMORA_TEST"), reader.atom(target),
                              reader.atom(property), XCB_CURRENT_TIME);
        reader.flush();
    }

    // The next notice of an answer.
    bool isAnswered(X11Connection& reader) {
        return pumpUntil([&] {
            while (const XcbEvent event = reader.nextEvent()) {
                if (typeOf(*event) == XCB_SELECTION_NOTIFY)
                    return reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property !=
                           XCB_ATOM_NONE;
            }
            return false;
        });
    }

    QtMainLoop m_loop;
    X11Connection m_x;
    X11SelectionTransfers m_transfers{m_x, m_loop};
    X11SelectionOwner m_owner{m_x, m_transfers, "VELMORA_TEST"};
};

TEST_F(SelectionTransfers, ReaderTakesTheText_OwnerLearnsIt) {
    const quint64 number = m_owner.offer(ClipboardContents::ofText("text"));
    std::vector<std::pair<uint32_t, quint64>> taken;
    m_owner.onTaken([&](const X11SelectionOwner::Question& question) {
        taken.emplace_back(question.client, question.offer);
    });
    X11Connection reader;
    const xcb_window_t window = reader.createWindow(XCB_EVENT_MASK_NO_EVENT);
    ask(reader, window, "UTF8_STRING", "ANSWER");
    ASSERT_TRUE(isAnswered(reader));
    EXPECT_FALSE(m_transfers.isIdle());
    EXPECT_EQ(reader.property(window, reader.atom("ANSWER")), "text");
    EXPECT_TRUE(taken.empty());
    xcb_delete_property(reader.get(), window, reader.atom("ANSWER"));
    reader.flush();

    EXPECT_TRUE(pumpUntil([&] { return m_transfers.isIdle(); }));
    EXPECT_EQ(taken, (std::vector<std::pair<uint32_t, quint64>>{{m_x.clientOf(window), number}}));
}

TEST_F(SelectionTransfers, ReaderDiesInTheMiddle_IsForgotten) {
    m_owner.offer(ClipboardContents::ofText(QByteArray(5'000'000, 'x')));
    {
        X11Connection reader;
        const xcb_window_t window = reader.createWindow(XCB_EVENT_MASK_NO_EVENT);
        ask(reader, window, "UTF8_STRING", "ANSWER");
        ASSERT_TRUE(isAnswered(reader));
        xcb_delete_property(reader.get(), window, reader.atom("ANSWER"));
        reader.flush();
        ASSERT_TRUE(pumpUntil([&] { return reader.property(window, reader.atom("ANSWER")).size() > 4; }));
        EXPECT_FALSE(m_transfers.isIdle());
    }
    EXPECT_TRUE(pumpUntil([&] { return m_transfers.isIdle(); }));
}

TEST_F(SelectionTransfers, ReaderAsksForSeveralTargetsAtOnce_GetsThoseThereAre) {
    m_owner.offer(ClipboardContents::ofText("text"));
    X11Connection reader;
    const xcb_window_t window = reader.createWindow(XCB_EVENT_MASK_NO_EVENT);
    const uint32_t pairs[] = {reader.atom("UTF8_STRING"), reader.atom("FIRST"), reader.atom("image/png"),
                              reader.atom("SECOND")};
    xcb_change_property(reader.get(), XCB_PROP_MODE_REPLACE, window, reader.atom("PAIRS"),
                        reader.atom("ATOM_PAIR"), 32, 4, pairs);
    ask(reader, window, "MULTIPLE", "PAIRS");
    ASSERT_TRUE(isAnswered(reader));

    EXPECT_EQ(reader.property(window, reader.atom("FIRST")), "text");
    const QByteArray answered = reader.property(window, reader.atom("PAIRS"));
    ASSERT_EQ(answered.size(), qsizetype(sizeof pairs));
    uint32_t result[4];
    std::memcpy(result, answered.constData(), sizeof result);
    EXPECT_EQ(result[1], pairs[1]);
    EXPECT_EQ(result[3], uint32_t{XCB_ATOM_NONE});
}

TEST_F(SelectionTransfers, TargetAsksLateWithTheTimeOfItsKey_GetsTheTextOfThatTime) {
    X11Connection reader;
    const xcb_window_t window = reader.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_owner.offer(ClipboardContents::ofPiece("first"), m_x.clientOf(window));
    const xcb_timestamp_t key = reader.serverTime(window);
    ASSERT_TRUE(waitUntil([&] { return reader.serverTime(window) > key; })); // the server counts milliseconds
    m_owner.offer(ClipboardContents::ofPiece("second"), m_x.clientOf(window));
    const auto read = [&](X11Connection& x, xcb_window_t requestor, xcb_timestamp_t time) {
        xcb_convert_selection(x.get(), requestor, x.atom("VELMORA_TEST"), x.atom("UTF8_STRING"),
                              x.atom("ANSWER"), time);
        x.flush();
        EXPECT_TRUE(isAnswered(x));
        return x.property(requestor, x.atom("ANSWER"));
    };
    EXPECT_EQ(read(reader, window, key), "first");
    EXPECT_EQ(read(reader, window, reader.serverTime(window)), "second");
    EXPECT_EQ(read(reader, window, XCB_CURRENT_TIME), "second");

    X11Connection other;
    EXPECT_EQ(read(other, other.createWindow(XCB_EVENT_MASK_NO_EVENT), key), "second");
}

} // namespace
} // namespace velmora::test
