#include "platform/linux/x11_compositing.h"
#include "support/desktop/own_server.h"
#include "support/desktop/wait_until.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class X11CompositingTest : public testing::Test {
protected:
    void startCompositor() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(server.display()));
        m_compositor.setProcessEnvironment(environment);
        m_compositor.setStandardErrorFile(QProcess::nullDevice());
        m_compositor.start(QStringLiteral("picom"), {QStringLiteral("--backend"), QStringLiteral("xrender"),
                                                     QStringLiteral("--config"), QProcess::nullDevice()});
    }
    void killCompositor() {
        m_compositor.kill();
        m_compositor.waitForFinished();
    }

    ~X11CompositingTest() override { killCompositor(); }

    OwnServer server;

private:
    QProcess m_compositor; // goes before its server
};

} // namespace

TEST_F(X11CompositingTest, NoCompositor_IsInactive) {
    EXPECT_FALSE(X11Compositing(server.display()).isActive());
}

TEST_F(X11CompositingTest, CompositorComesAndGoes_IsFollowedAndAnnounced) {
    X11Compositing compositing(server.display());
    const QSignalSpy changes(&compositing, &Compositing::changed);
    for (int round = 0; round < 2; ++round) {
        startCompositor();
        ASSERT_TRUE(waitUntil([&] { return compositing.isActive(); })) << round;
        killCompositor();
        ASSERT_TRUE(waitUntil([&] { return !compositing.isActive(); })) << round;
    }
    EXPECT_EQ(changes.size(), 4);
}

TEST_F(X11CompositingTest, CompositorIsThereAlready_IsActiveFromTheStart) {
    startCompositor();
    EXPECT_TRUE(waitUntil([&] { return X11Compositing(server.display()).isActive(); }));
}

TEST_F(X11CompositingTest, ServerGoes_IsInactive) {
    startCompositor();
    X11Compositing compositing(server.display());
    ASSERT_TRUE(waitUntil([&] { return compositing.isActive(); }));
    killCompositor();
    server.stop();
    EXPECT_TRUE(waitUntil([&] { return !compositing.isActive(); }));
}

TEST(X11Compositing, NoServer_IsInactive) {
    EXPECT_FALSE(X11Compositing(":987").isActive());
}

TEST(X11Compositing, OfTheSession_IsActive) {
    EXPECT_TRUE(X11Compositing().isActive());
}
