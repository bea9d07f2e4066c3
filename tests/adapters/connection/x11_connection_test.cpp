#include "platform/linux/x11_connection.h"
#include "support/desktop/wait_until.h"

#include <QTimer>

#include <gtest/gtest.h>
#include <poll.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

// A connection that listens to what happens to its window, and another program that makes it happen.
class ListeningConnection : public testing::Test {
protected:
    ListeningConnection() {
        m_x->listen([this] { hear(); });
        m_x->sync();
    }

    void hear() {
        ++m_calls;
        while (const XcbEvent event = m_x->nextEvent())
            m_heard += typeOf(*event) == XCB_PROPERTY_NOTIFY;
    }

    // The server has sent the event on when it returns.
    void makeEvent() {
        changeProperty(m_other, m_window);
        m_other.sync();
        pollfd readable{xcb_get_file_descriptor(m_x->get()), POLLIN, 0};
        ASSERT_EQ(poll(&readable, 1, 30'000), 1);
    }

    static void changeProperty(X11Connection& x, xcb_window_t window) {
        xcb_change_property(x.get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                            nullptr);
    }

    bool hears(int events) {
        return waitUntil([&] { return m_heard == events; });
    }

    std::unique_ptr<X11Connection> m_x = std::make_unique<X11Connection>();
    X11Connection m_other;
    xcb_window_t m_window = m_x->createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    int m_calls = 0;
    int m_heard = 0;
};

TEST_F(ListeningConnection, EventArrives_IsTold) {
    makeEvent();
    EXPECT_TRUE(hears(1));
}

TEST_F(ListeningConnection, EventIsReadBesideAReply_IsTold) {
    makeEvent();
    m_x->sync();
    EXPECT_EQ(m_calls, 0) << "in the middle of another call";
    EXPECT_TRUE(hears(1));
}

TEST_F(ListeningConnection, EventIsReadWhileSomethingIsSent_IsTold) {
    makeEvent();
    xcb_no_operation(m_x->get());
    m_x->flush();
    EXPECT_EQ(m_calls, 0) << "in the middle of another call";
    EXPECT_TRUE(hears(1));
}

TEST_F(ListeningConnection, EventIsReadInTheLastTurnBeforeTheLoopSleeps_IsTold) {
    QEventLoop loop;
    m_x->listen([&] {
        hear();
        loop.quit();
    });
    const auto readIt = [this] {
        makeEvent();
        m_x->sync();
    };
    QMetaObject::invokeMethod(&loop, readIt, Qt::QueuedConnection);
    QTimer::singleShot(30s, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_EQ(m_heard, 1);
}

TEST_F(ListeningConnection, LoopThatDoesNotSleep_TellsToo) {
    makeEvent();
    m_x->sync();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_heard, 1);
}

TEST_F(ListeningConnection, EventIsReadWhileAnotherIsHandled_IsTold) {
    bool isFirst = true;
    m_x->listen([&] {
        const XcbEvent first = m_x->nextEvent();
        m_heard += bool(first);
        if (std::exchange(isFirst, false)) {
            makeEvent();
            m_x->sync();
        }
    });
    makeEvent();
    EXPECT_TRUE(hears(2));
}

TEST_F(ListeningConnection, SomethingIsWritten_GoesOutByItself) {
    const xcb_window_t window = m_other.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_other.sync();
    const auto otherHears = [&] { return waitUntil([&] { return m_other.nextEvent() != nullptr; }); };
    changeProperty(*m_x, window);
    EXPECT_TRUE(otherHears());

    QMetaObject::invokeMethod(
        qApp, [&] { changeProperty(*m_x, window); }, Qt::QueuedConnection);
    EXPECT_TRUE(otherHears()) << "of what was written in a turn of the loop";
}

TEST_F(ListeningConnection, IsDestroyedByWhoeverHears_NobodyMinds) {
    m_x->listen([this] { m_x.reset(); });
    makeEvent();
    m_x->sync();
    EXPECT_TRUE(waitUntil([this] { return !m_x; }));
}

TEST_F(ListeningConnection, ServerHangsUp_IsToldOnce) {
    xcb_kill_client(m_other.get(), m_window);
    m_other.sync();
    ASSERT_TRUE(waitUntil([this] { return !m_x->isOpen(); }));
    EXPECT_EQ(m_calls, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_calls, 1);
}

} // namespace
} // namespace velmora::test
