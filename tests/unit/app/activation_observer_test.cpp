#include "app/activation_observer.h"
#include "support/wait.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QWindow>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class ActivationObserverTest : public testing::Test {
protected:
    static void focus(QWindow& window) {
        window.show();
        window.requestActivate();
        ASSERT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == &window; }));
    }

    ActivationObserver observer;
    QSignalSpy activations{&observer, &ActivationObserver::becameActive};
};

} // namespace

TEST_F(ActivationObserverTest, OrdinaryWindowGetsTheFocus_CountsOnce) {
    QWindow first;
    QWindow second;
    focus(first);
    EXPECT_EQ(activations.size(), 1);
    focus(second);
    EXPECT_EQ(activations.size(), 1) << "the user was here already";
}

TEST_F(ActivationObserverTest, PopupGetsTheFocus_DoesNotCount) {
    QWindow popup;
    popup.setFlags(Qt::Tool);
    focus(popup);
    EXPECT_EQ(activations.size(), 0);
    QWindow window;
    focus(window);
    EXPECT_EQ(activations.size(), 1);
}
