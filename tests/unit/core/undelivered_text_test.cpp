#include "core/undelivered_text.h"
#include "support/dictation_on_fakes.h"

#include <gmock/gmock.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class FakeNotifications final : public Notifications {
public:
    void show(const Notification& notification) override { shown.push_back(notification); }

    std::vector<Notification> shown;
};

class UndeliveredTextTest : public testing::Test, protected DictationOnFakes {
protected:
    void finish(const QString& text) {
        server.done(text);
        server.finish();
        loop.runPosted();
    }
    void expectHistoryOffers(const QString& text) {
        ASSERT_EQ(notifications.shown.size(), 1U);
        EXPECT_EQ(notifications.shown[0].title, QStringLiteral("Текст не вставлен"));
        EXPECT_EQ(notifications.shown[0].body,
                  QStringLiteral("Окно его не приняло. Текст сохранён в истории."));
        EXPECT_EQ(notifications.shown[0].actionLabel, QStringLiteral("Скопировать"));
        notifications.shown[0].action();
        EXPECT_EQ(desktop.clipboard, text);
    }

    FakeNotifications notifications;
    UndeliveredText undelivered{pipeline, desktop, injector, notifications};
};

TEST_F(UndeliveredTextTest, TextArrives_NothingIsTold) {
    transcribe();
    server.chunk(QStringLiteral("раз "));
    finish(QStringLiteral("раз два"));
    loop.advance(10s);
    EXPECT_TRUE(notifications.shown.empty());
}

TEST_F(UndeliveredTextTest, PiecesFailWhileTheReplyStreams_IsToldOnceAtTheEndWithTheWholeText) {
    transcribe();
    server.chunk(QStringLiteral("раз "));
    desktop.undelivered(QStringLiteral("раз "));
    server.chunk(QStringLiteral("два"));
    desktop.undelivered(QStringLiteral("два"));
    loop.advance(1s);
    EXPECT_TRUE(notifications.shown.empty());
    finish(QStringLiteral("раз два"));
    expectHistoryOffers(QStringLiteral("раз два"));
}

TEST_F(UndeliveredTextTest, LastPieceFailsAfterTheEnd_IsToldThen) {
    transcribe();
    finish(QStringLiteral("раз два"));
    loop.advance(1s);
    desktop.undelivered(QStringLiteral("раз два"));
    expectHistoryOffers(QStringLiteral("раз два"));
}

TEST_F(UndeliveredTextTest, DictationFails_OnlyWhatWasUndeliveredCanBeCopied) {
    transcribe();
    server.chunk(QStringLiteral("раз "));
    desktop.undelivered(QStringLiteral("раз "));
    finish(QString());
    ASSERT_EQ(notifications.shown.size(), 1U);
    EXPECT_EQ(notifications.shown[0].body, QStringLiteral("Окно его не приняло."));
    notifications.shown[0].action();
    EXPECT_EQ(desktop.clipboard, QStringLiteral("раз "));
}

TEST_F(UndeliveredTextTest, NextDictation_IsNotToldOfTheLastOnesFailure) {
    transcribe();
    finish(QStringLiteral("раз"));
    desktop.undelivered(QStringLiteral("раз"));
    transcribe();
    finish(QStringLiteral("два"));
    loop.advance(10s);
    EXPECT_EQ(notifications.shown.size(), 1U);
}

} // namespace
} // namespace velmora::test
