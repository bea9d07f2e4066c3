#include "embedding_tray.h"
#include "platform/linux/tray_status_item.h"
#include "pointer_hand.h"
#include "support/desktop/wait_until.h"

#include <QGuiApplication>
#include <QPixmap>
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
    [[nodiscard]] bool appears() const { return EmbeddingTray::takes(item); }
    [[nodiscard]] QColor colorShown() {
        const QPoint middle = item.frame()->center();
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, middle.x(), middle.y(), 1, 1)
            .toImage()
            .pixelColor(0, 0);
    }

    EmbeddingTray tray;
    TrayStatusItem item;
};

} // namespace

TEST_F(EmbeddingTrayTest, NoTray_NothingIsShown) {
    EXPECT_FALSE(item.isShown());
    EXPECT_EQ(item.frame(), std::nullopt);
}

TEST_F(EmbeddingTrayTest, TrayStartsLater_TheIconLiesInItWithItsPlaceKnown) {
    const QSignalSpy changes(&item, &StatusItem::shownChanged);
    tray.start();
    ASSERT_TRUE(appears());
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(EmbeddingTrayTest, Picture_IsOnTheScreenAndChanges) {
    tray.start();
    ASSERT_TRUE(appears());
    EXPECT_TRUE(waitUntil([this] { return colorShown() == QColor(Qt::red); }));
    item.setImage(picture(Qt::blue));
    EXPECT_TRUE(waitUntil([this] { return colorShown() == QColor(Qt::blue); }));
}

TEST_F(EmbeddingTrayTest, EveryButton_IsAClick) {
    tray.start();
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
    tray.start();
    ASSERT_TRUE(appears());
    tray.stop();
    EXPECT_TRUE(waitUntil([this] { return !item.isShown(); }));
    tray.start();
    EXPECT_TRUE(appears());
    EXPECT_TRUE(waitUntil([this] { return colorShown() == QColor(Qt::red); }));
}
