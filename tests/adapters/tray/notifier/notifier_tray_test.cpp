#include "fake_notifier_tray.h"
#include "platform/linux/tray_status_item.h"
#include "support/desktop/wait_until.h"

#include <QCursor>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

QList<QImage> picture(const QColor& color) {
    QList<QImage> sizes;
    for (const int pixels : {22, 44}) {
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(color);
        image.setDevicePixelRatio(pixels / 22.0);
        sizes.append(image);
    }
    return sizes;
}

class NotifierTrayTest : public testing::Test {
protected:
    NotifierTrayTest() {
        item.setImage(picture(Qt::red));
        item.setToolTip(QStringLiteral("Velmora"));
    }
    void startTray(bool withHost = true) { tray = std::make_unique<FakeNotifierTray>(withHost); }
    [[nodiscard]] bool appears() {
        return waitUntil([this] { return item.isShown() && !tray->items().isEmpty(); });
    }
    [[nodiscard]] QColor colorShown() { return tray->picture().value(0).pixelColor(5, 5); }

    std::unique_ptr<FakeNotifierTray> tray;
    TrayStatusItem item;
};

} // namespace

TEST_F(NotifierTrayTest, NoTray_NothingIsShownAndNothingBreaks) {
    EXPECT_FALSE(item.isShown());
    EXPECT_EQ(item.frame(), std::nullopt);
    item.setImage(picture(Qt::green));
}

TEST_F(NotifierTrayTest, WatcherWithoutAHost_IsNoTrayUntilTheHostComes) {
    startTray(false);
    ASSERT_TRUE(tray->hasAnswered());
    EXPECT_FALSE(item.isShown());
    tray->addHost();
    EXPECT_TRUE(appears());
}

TEST_F(NotifierTrayTest, TrayStartsLater_TheItemRegisters) {
    const QSignalSpy changes(&item, &StatusItem::shownChanged);
    startTray();
    ASSERT_TRUE(appears());
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(tray->toolTip(), QStringLiteral("Velmora"));
    EXPECT_EQ(item.frame(), QRect(QCursor::pos(), QSize(1, 1)));
}

TEST_F(NotifierTrayTest, Picture_IsThereInBothSizesAndChanges) {
    startTray();
    ASSERT_TRUE(appears());
    QList<QSize> sizes;
    for (const QImage& image : tray->picture())
        sizes.append(image.size());
    EXPECT_THAT(sizes, testing::IsSupersetOf({QSize(22, 22), QSize(44, 44)}));
    EXPECT_EQ(colorShown(), QColor(Qt::red));
    item.setImage(picture(Qt::green));
    EXPECT_EQ(colorShown(), QColor(Qt::green));
}

TEST_F(NotifierTrayTest, EveryButton_IsAClick) {
    startTray();
    ASSERT_TRUE(appears());
    const QSignalSpy clicks(&item, &StatusItem::clicked);
    for (const char* method : {"Activate", "ContextMenu", "SecondaryActivate"}) {
        const auto before = clicks.size();
        tray->call(method);
        EXPECT_TRUE(waitUntil([&] { return clicks.size() > before; })) << method;
        EXPECT_EQ(clicks.size(), before + 1) << method;
    }
}

TEST_F(NotifierTrayTest, TrayGoesAndComesAgain_TheItemFollows) {
    startTray();
    ASSERT_TRUE(appears());
    tray.reset();
    EXPECT_TRUE(waitUntil([this] { return !item.isShown(); }));
    EXPECT_EQ(item.frame(), std::nullopt);
    startTray();
    EXPECT_TRUE(appears());
    EXPECT_EQ(colorShown(), QColor(Qt::red));
}
