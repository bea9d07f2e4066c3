#include "platform/linux/tray_status_item.h"
#include "pointer_hand.h"
#include "support/desktop/wait_until.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace velmora;
using namespace velmora::test;

namespace {

QList<QImage> picture(const QColor& color) {
    QImage image(22, 22, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return {image};
}

class EmbeddingTrayTest : public testing::Test {
protected:
    EmbeddingTrayTest() {
        item.setImage(picture(Qt::red));
        item.setToolTip(QStringLiteral("Velmora"));
    }
    ~EmbeddingTrayTest() override { stopTray(); }

    void startTray() {
        tray.start(QStringLiteral("trayer"),
                   {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--align"),
                    QStringLiteral("right"), QStringLiteral("--widthtype"), QStringLiteral("request"),
                    QStringLiteral("--height"), QStringLiteral("24")});
        ASSERT_TRUE(tray.waitForStarted());
    }
    void stopTray() {
        tray.kill();
        tray.waitForFinished();
    }
    /// Whether it comes to lie in the tray, which is told by a place at the top of the screen.
    [[nodiscard]] bool appears() {
        return waitUntil([this] {
            const QRect place = item.frame().value_or(QRect());
            return item.isShown() && place.width() > 8 && place.y() < 30 && place.x() > 600;
        });
    }
    [[nodiscard]] QColor colorShown() {
        const QPoint middle = item.frame()->center();
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, middle.x(), middle.y(), 1, 1)
            .toImage()
            .pixelColor(0, 0);
    }

    QProcess tray;
    TrayStatusItem item;
};

} // namespace

TEST_F(EmbeddingTrayTest, NoTray_NothingIsShown) {
    EXPECT_FALSE(item.isShown());
    EXPECT_EQ(item.frame(), std::nullopt);
}

TEST_F(EmbeddingTrayTest, TrayStartsLater_TheIconLiesInItWithItsPlaceKnown) {
    const QSignalSpy changes(&item, &StatusItem::shownChanged);
    startTray();
    ASSERT_TRUE(appears());
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(QGuiApplication::primaryScreen()->geometry().contains(*item.frame()));
}

TEST_F(EmbeddingTrayTest, Picture_IsOnTheScreenAndChanges) {
    startTray();
    ASSERT_TRUE(appears());
    EXPECT_TRUE(waitUntil([this] { return colorShown() == QColor(Qt::red); }));
    item.setImage(picture(Qt::blue));
    EXPECT_TRUE(waitUntil([this] { return colorShown() == QColor(Qt::blue); }));
}

TEST_F(EmbeddingTrayTest, EveryButton_IsAClick) {
    startTray();
    ASSERT_TRUE(appears());
    const QSignalSpy clicks(&item, &StatusItem::clicked);
    const PointerHand hand;
    for (const auto button : {PointerHand::Left, PointerHand::Middle, PointerHand::Right}) {
        const auto before = clicks.size();
        hand.click(item.frame()->center(), button);
        EXPECT_TRUE(waitUntil([&] { return clicks.size() > before; })) << button;
        EXPECT_EQ(clicks.size(), before + 1) << button;
    }
}

TEST_F(EmbeddingTrayTest, TrayGoesAndComesAgain_TheIconFollows) {
    startTray();
    ASSERT_TRUE(appears());
    stopTray();
    EXPECT_TRUE(waitUntil([this] { return !item.isShown(); }));
    startTray();
    EXPECT_TRUE(appears());
    EXPECT_TRUE(waitUntil([this] { return colorShown() == QColor(Qt::red); }));
}
