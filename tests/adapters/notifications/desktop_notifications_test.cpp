#include "foundation/log.h"
#include "platform/linux/desktop_notifications.h"
#include "support/desktop/fake_notification_service.h"
#include "support/desktop/wait_until.h"
#include "support/private_bus.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class DesktopNotificationsTest : public testing::Test {
protected:
    [[nodiscard]] Notification notification(const char* title) {
        return {.title = QString::fromUtf8(title),
                .body = QStringLiteral("подробно"),
                .actionLabel = QStringLiteral("Сделать"),
                .action = [this, title] { m_done << QString::fromUtf8(title); }};
    }

    PrivateBus m_bus;
    QStringList m_done;
};

TEST_F(DesktopNotificationsTest, Show_DesktopShowsItWithItsAction) {
    FakeNotificationService service(m_bus.connect(QStringLiteral("service")));
    DesktopNotifications notifications(m_bus.connect(QStringLiteral("program")));
    notifications.show(notification("раз"));
    ASSERT_TRUE(waitUntil([&] { return service.shown.size() == 1; }));
    EXPECT_EQ(service.shown[0].title, QStringLiteral("раз"));
    EXPECT_EQ(service.shown[0].body, QStringLiteral("подробно"));
    ASSERT_EQ(service.shown[0].actions.size(), 2);
    EXPECT_EQ(service.shown[0].actions[1], QStringLiteral("Сделать"));
    EXPECT_TRUE(m_done.isEmpty());
}

TEST_F(DesktopNotificationsTest, UserChoosesTheAction_ItIsDone) {
    FakeNotificationService service(m_bus.connect(QStringLiteral("service")));
    DesktopNotifications notifications(m_bus.connect(QStringLiteral("program")));
    notifications.show(notification("раз"));
    ASSERT_TRUE(waitUntil([&] { return service.shown.size() == 1; }));
    service.choose(7, service.shown[0].actions[0]); // another program's
    service.choose(service.lastId, QStringLiteral("другое"));
    service.choose(service.lastId, service.shown[0].actions[0]);
    ASSERT_TRUE(waitUntil([&] { return !m_done.isEmpty(); }));
    EXPECT_EQ(m_done, QStringList{QStringLiteral("раз")});
}

TEST_F(DesktopNotificationsTest, SecondOne_TakesThePlaceOfTheFirst) {
    FakeNotificationService service(m_bus.connect(QStringLiteral("service")));
    DesktopNotifications notifications(m_bus.connect(QStringLiteral("program")));
    notifications.show(notification("раз"));
    service.choose(0, QString()); // nothing of that is ours
    ASSERT_TRUE(waitUntil([&] { return service.shown.size() == 1; }));
    // Its number is known here once the answer has come.
    ASSERT_TRUE(waitUntil([&] {
        notifications.show(notification("два"));
        return waitUntil([&] { return service.shown.last().replaces == 1; }, std::chrono::milliseconds(100));
    }));
    service.choose(1, service.shown.last().actions[0]);
    ASSERT_TRUE(waitUntil([&] { return !m_done.isEmpty(); }));
    EXPECT_EQ(m_done, QStringList{QStringLiteral("два")});
}

TEST_F(DesktopNotificationsTest, NoService_IsToldInTheLog) {
    QStringList lines;
    const LogCapture capture([&](const QString& line) { lines << line; });
    DesktopNotifications notifications(m_bus.connect(QStringLiteral("program")));
    notifications.show(notification("раз"));
    ASSERT_TRUE(waitUntil([&] { return !lines.isEmpty(); }));
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("[Velmora] notification: ")));
}

} // namespace
} // namespace velmora::test
