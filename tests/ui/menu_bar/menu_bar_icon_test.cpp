#include "support/dictation_on_fakes.h"
#include "support/fake_status_item.h"
#include "ui/menu_bar/menu_bar_icon.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;

namespace {

class MenuBarIconTest : public testing::Test, protected DictationOnFakes {
protected:
    [[nodiscard]] int imagesIn(MainLoop::Duration duration) {
        const int before = statusItem.imagesSet;
        loop.advance(duration);
        return statusItem.imagesSet - before;
    }

    FakeStatusItem statusItem;
    MenuBarIcon icon{pipeline, settings, statusItem, loop};
};

} // namespace

TEST_F(MenuBarIconTest, AtStart_ShowsTheRestingMarkInBothSizes) {
    ASSERT_EQ(statusItem.image.size(), 2);
    EXPECT_EQ(statusItem.image[0].size(), QSize(22, 22));
    EXPECT_EQ(statusItem.image[1].size(), QSize(44, 44));
    EXPECT_EQ(statusItem.toolTip, QStringLiteral("Velmora"));
}

TEST_F(MenuBarIconTest, Idle_HasNoTimer) {
    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(imagesIn(1min), 0);
}

TEST_F(MenuBarIconTest, Processing_MovesAtMost24TimesASecond) {
    transcribe();
    EXPECT_EQ(statusItem.toolTip, QStringLiteral("Velmora — распознавание"));
    const int frames = imagesIn(1s);
    EXPECT_LE(frames, 24);
    EXPECT_GE(frames, 20);
}

TEST_F(MenuBarIconTest, SecondTurnOfTheWave_ShowsTheSamePictures) {
    transcribe();
    loop.advance(1s);
    const qint64 first = statusItem.image[0].cacheKey();
    bool cameAgain = false;
    for (int frame = 0; frame < 80 && !cameAgain; ++frame) {
        loop.advance(42ms);
        cameAgain = statusItem.image[0].cacheKey() == first;
    }
    EXPECT_TRUE(cameAgain);
}

TEST_F(MenuBarIconTest, RecordingInSilence_SetsNoPictureTwice) {
    record();
    EXPECT_EQ(statusItem.toolTip, QStringLiteral("Velmora — идёт запись"));
    EXPECT_EQ(imagesIn(1s), 0);
}

TEST_F(MenuBarIconTest, RecordingSpeech_FollowsTheLevels) {
    record();
    speak(0.6);
    EXPECT_EQ(imagesIn(100ms), 1);
    speak(0.2);
    EXPECT_EQ(imagesIn(100ms), 1);
}

TEST_F(MenuBarIconTest, Error_ShowsWhyAndHasNoTimerOfItsOwn) {
    fail();
    EXPECT_EQ(statusItem.image[0].pixelColor(8, 11), QColor(0xFF, 0x3B, 0x30));
    EXPECT_TRUE(statusItem.toolTip.startsWith(QStringLiteral("Velmora — Нет доступа к микрофону")));
    EXPECT_EQ(loop.pendingTimers(), 1U); // the error's own end
    loop.advance(6s);
    EXPECT_EQ(statusItem.toolTip, QStringLiteral("Velmora"));
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(MenuBarIconTest, NoTray_NothingIsAnimated) {
    statusItem.moveTo({});
    transcribe();
    EXPECT_EQ(imagesIn(1s), 0);
    statusItem.moveTo(QRect(0, 0, 22, 22));
    EXPECT_GT(imagesIn(1s), 0);
}

TEST_F(MenuBarIconTest, AccentChanged_PictureFollowsAtOnce) {
    const QColor before = statusItem.image[0].pixelColor(5, 5);
    settings.setThemeColor(QStringLiteral("teal"));
    const QColor after = statusItem.image[0].pixelColor(5, 5);
    EXPECT_NE(after, before);
    EXPECT_GT(after.blue(), after.red());
}
