#include "support/dictation_on_fakes.h"
#include "support/ui/view_host.h"
#include "support/wait.h"
#include "ui/hud/live_bars.h"
#include "ui/hud/recording_hud_model.h"
#include "ui/hud/wave_dots.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

#include <numbers>

using namespace velmora;
using namespace velmora::test;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace state = velmora::pipeline_state;

namespace {

const QString longMessage = QStringLiteral(
    "Не удалось начать запись: устройство занято другой программой, и она не отдаёт его уже четверть часа");

class RecordingHUDTest : public testing::Test {
protected:
    RecordingHUDTest() { dictation.settings.setHudMinimal(false); }

    void show(const PipelineState& state) {
        model.setState(state);
        if (!std::exchange(m_shown, true))
            host.show("Hud", "RecordingHUD", {{QStringLiteral("model"), QVariant::fromValue(&model)}});
    }
    /// As the next frame has it.
    [[nodiscard]] QRectF capsule() const {
        [[maybe_unused]] const QImage frame = host.grab();
        return host.root()->property("capsuleRect").toRectF();
    }
    template<typename Item>
    [[nodiscard]] Item* drawing() const {
        return host.root()->findChild<Item*>();
    }
    [[nodiscard]] bool isMoving() const {
        const QSignalSpy frames(&host.window(), &QQuickWindow::frameSwapped);
        return waitUntil([&] { return frames.size() > 3; });
    }

    DictationOnFakes dictation;
    RecordingHUDModel model{dictation.recorder, dictation.settings};
    ViewHost host;

private:
    bool m_shown = false;
};

} // namespace

TEST_F(RecordingHUDTest, Recording_ShowsTheTimer) {
    show(state::Recording{61});
    EXPECT_THAT(host.texts(), ElementsAre(QStringLiteral("01:01")));
    EXPECT_TRUE(host.has(QStringLiteral("Идёт запись")));
}

TEST_F(RecordingHUDTest, StateChanges_TheContentFollows) {
    show(state::Recording{1});
    show(state::Transcribing{});
    EXPECT_THAT(host.texts(), ElementsAre(QStringLiteral("Транскрибируем…")));
    show(state::Error{QStringLiteral("Нет сети")});
    EXPECT_THAT(host.texts(), ElementsAre(QStringLiteral("Нет сети")));
    show(state::StreamingRecording{1, QStringLiteral("и тогда"), {}});
    EXPECT_THAT(host.texts(), ElementsAre(QStringLiteral("и тогда")));
}

TEST_F(RecordingHUDTest, OfACoordinator_FollowsItsState) {
    const RecordingHUDModel follower(dictation.pipeline, dictation.settings);
    EXPECT_EQ(follower.content(), HudContent());
    dictation.record();
    EXPECT_EQ(follower.content().timer, QStringLiteral("00:00"));
    dictation.loop.advance(std::chrono::seconds(2));
    EXPECT_EQ(follower.content().timer, QStringLiteral("00:02"));
}

TEST_F(RecordingHUDTest, MinimalSwitchedOnDuringATake_TakesEffectAtOnce) {
    show(state::Recording{1});
    const qreal full = capsule().width();
    dictation.settings.setHudMinimal(true);
    EXPECT_THAT(host.texts(), IsEmpty());
    EXPECT_LT(capsule().width(), full / 2);
    EXPECT_TRUE(host.has(QStringLiteral("Идёт запись")));
}

TEST_F(RecordingHUDTest, SizeChangedDuringATake_TakesEffectAtOnce) {
    show(state::Recording{1});
    EXPECT_EQ(capsule().height(), 28);
    dictation.settings.setHudSize(QStringLiteral("large"));
    EXPECT_EQ(capsule().height(), 44);
    EXPECT_EQ(drawing<LiveBars>()->width(), 140);
}

TEST_F(RecordingHUDTest, StyleChangedDuringATake_TakesEffectAtOnce) {
    show(state::Recording{1});
    EXPECT_TRUE(drawing<LiveBars>());
    dictation.settings.setHudStyle(QStringLiteral("dots"));
    EXPECT_TRUE(drawing<WaveDots>());
    dictation.settings.setHudStyle(QStringLiteral("ovals"));
    EXPECT_TRUE(waitUntil([&] { return !drawing<WaveDots>(); }));
    EXPECT_TRUE(drawing<LiveBars>());
}

TEST_F(RecordingHUDTest, LongMessage_IsElidedInsideThePanelAndSpokenWhole) {
    for (const char* size : {"small", "medium", "large"}) {
        dictation.settings.setHudSize(QLatin1String(size));
        show(state::Error{longMessage});
        EXPECT_GE(capsule().left(), 10) << size;
        EXPECT_LE(capsule().right(), 470) << size;
        EXPECT_TRUE(host.has(longMessage)) << size;
    }
}

TEST_F(RecordingHUDTest, MessageOfTwoLines_KeepsTheCapsulesHeight) {
    show(state::Error{QStringLiteral("Первая строка\nвторая строка")});
    const QQuickItem* text = nullptr;
    for (const QQuickItem* item : host.root()->findChildren<QQuickItem*>()) {
        if (item->inherits("QQuickText") && item->isVisible())
            text = item;
    }
    ASSERT_TRUE(text);
    EXPECT_LT(text->height(), capsule().height());
}

TEST_F(RecordingHUDTest, LongPartialText_IsNoWiderThanItsPlace) {
    show(state::StreamingRecording{1, longMessage, {}});
    const qreal withLongText = capsule().width();
    show(state::StreamingRecording{1, longMessage + longMessage, {}});
    EXPECT_EQ(capsule().width(), withLongText);
    EXPECT_LT(withLongText, 28.0 / 3 * 2 + 9 + 80 + 0.5 + 220 + 30 + 3);
}

TEST_F(RecordingHUDTest, Capsule_IsInTheMiddleAndOnWholePixels) {
    for (const char* size : {"small", "medium", "large"}) {
        dictation.settings.setHudSize(QLatin1String(size));
        for (const bool minimal : {false, true}) {
            dictation.settings.setHudMinimal(minimal);
            show(state::Recording{1});
            EXPECT_EQ(capsule().center().x(), 240) << size << minimal;
            EXPECT_EQ(capsule().x(), std::floor(capsule().x())) << size << minimal;
        }
    }
}

TEST_F(RecordingHUDTest, Dots_MakeTheCapsuleAsWideAsTheyAre) {
    dictation.settings.setHudStyle(QStringLiteral("dots"));
    dictation.record();
    show(state::Recording{1});
    const qreal silent = capsule().width();
    EXPECT_EQ(drawing<WaveDots>()->width(), 12 * 3 + 11 * 4);
    for (int i = 0; i < 12; ++i)
        dictation.speak(1);
    EXPECT_TRUE(waitUntil([&] { return !drawing<WaveDots>()->isGliding(); }));
    EXPECT_NEAR(drawing<WaveDots>()->width(), 12 * 14 + 11 * 4, 0.01);
    EXPECT_NEAR(capsule().width() - silent, 12 * 11, 2);
}

TEST_F(RecordingHUDTest, LoudestDots_StayInsideThePanel) {
    dictation.settings.setHudStyle(QStringLiteral("dots"));
    dictation.settings.setHudSize(QStringLiteral("large"));
    dictation.record();
    for (int i = 0; i < 12; ++i)
        dictation.speak(1);
    for (const QString& partial : {QString(), longMessage}) {
        show(state::StreamingRecording{1, partial, {}});
        EXPECT_GE(capsule().left(), 10) << partial.size();
        EXPECT_LE(capsule().right(), 470) << partial.size();
    }
}

TEST_F(RecordingHUDTest, Speech_BarsGlideToIt) {
    dictation.record();
    show(state::Recording{1});
    const auto* bars = drawing<LiveBars>();
    ASSERT_THAT(bars->extents(), testing::AllOf(SizeIs(16), Each(3.0)));
    dictation.speak(1);
    EXPECT_TRUE(bars->isGliding());
    EXPECT_LT(bars->extents().back(), bars->targets().back());
    EXPECT_TRUE(waitUntil([&] { return !bars->isGliding(); }));
    EXPECT_EQ(bars->extents(), bars->targets());
    EXPECT_NEAR(bars->extents().back(), 14 * 1.3 * (0.7 + 0.3 * std::sin(15.0 / 16 * std::numbers::pi)),
                0.01);
}

TEST_F(RecordingHUDTest, SilenceAfterSilence_MovesNothing) {
    dictation.record();
    show(state::Recording{1});
    const QSignalSpy heard(&dictation.recorder, &AudioRecorder::levelsChanged);
    dictation.speak(0);
    EXPECT_THAT(heard, SizeIs(1));
    EXPECT_FALSE(drawing<LiveBars>()->isGliding());
}

TEST_F(RecordingHUDTest, LevelsAreSilent_TheDotStillPulsesAndTheTimerShows) {
    show(state::Recording{1});
    EXPECT_TRUE(isMoving());
    EXPECT_TRUE(host.has(QStringLiteral("Идёт запись")));
    EXPECT_THAT(host.texts(), ElementsAre(QStringLiteral("00:01")));
}

TEST_F(RecordingHUDTest, LevelsAreEmpty_NoVoiceIsDrawnAndTheDotAndTheTimerShow) {
    dictation.record();
    for (int i = 0; i < 32; ++i)
        dictation.speak(1);
    const auto pointsOfTheVoice = [this] {
        const QImage picture = host.grab();
        int points = 0;
        for (int x = 0; x < picture.width(); ++x)
            points += picture.pixelColor(x, picture.height() / 2) == host.theme.tokens().accent;
        return points;
    };
    for (const char* style : {"bars", "dots", "wave"}) {
        dictation.settings.setHudStyle(QLatin1String(style));
        show(state::Recording{1});
        ASSERT_TRUE(waitUntil([&] { return host.root()->findChildren<LevelView*>().size() == 1; })) << style;
        EXPECT_GT(pointsOfTheVoice(), 10) << style;
        drawing<LevelView>()->setSource(nullptr); // one that has gone; each has levels, if silent ones
        EXPECT_EQ(pointsOfTheVoice(), 0) << style;
        EXPECT_GE(drawing<LevelView>()->implicitWidth(), 0) << style;
        EXPECT_TRUE(host.has(QStringLiteral("Идёт запись"))) << style;
        EXPECT_THAT(host.texts(), ElementsAre(QStringLiteral("00:01"))) << style;
    }
}

TEST_F(RecordingHUDTest, Bars_AreSharpAtBothSides) {
    dictation.record();
    for (int i = 0; i < 32; ++i)
        dictation.speak(1);
    for (const bool minimal : {false, true}) {
        dictation.settings.setHudMinimal(minimal);
        show(state::Recording{1});
        const QImage picture = host.grab();
        const auto* bars = drawing<LiveBars>();
        const int y = picture.height() / 2;
        int lit = 0;
        const qreal left = bars->mapToScene({}).x();
        for (int x = qFloor(left); x < qCeil(left + bars->width()); ++x) {
            const QColor color = picture.pixelColor(x, y);
            if (color == host.theme.tokens().accent)
                ++lit;
        }
        EXPECT_EQ(lit, 3 * int(bars->extents().size())) << minimal;
    }
}

TEST_F(RecordingHUDTest, Spinner_Turns) {
    show(state::Transcribing{});
    EXPECT_TRUE(isMoving());
}

TEST_F(RecordingHUDTest, Glow_IsStrongerWhileRecording) {
    const auto light = [&] { return host.grab().pixelColor(240, host.window().height() / 2 - 20).green(); };
    show(state::StreamingRecording{1, {}, {}});
    const int weak = light();
    show(state::Recording{1});
    EXPECT_GT(light(), weak);
    EXPECT_GT(weak, host.window().color().green());
}

TEST_F(RecordingHUDTest, PanelsEdge_IsNeitherLitNorShaded) {
    for (const bool dark : {true, false}) {
        host.scheme.setDark(dark);
        show(state::Recording{1});
        host.window().setColor(dark ? QColor(32, 36, 40) : QColor(244, 245, 246));
        const QImage picture = host.grab();
        for (int x = 0; x < picture.width(); x += 5) {
            for (const int y : {0, picture.height() - 1})
                EXPECT_NEAR(picture.pixelColor(x, y).green(), host.window().color().green(), 1) << x << y;
        }
    }
}
