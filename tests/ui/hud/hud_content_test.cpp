#include "ui/hud/hud_content.h"

#include <gtest/gtest.h>

using namespace velmora;
namespace state = velmora::pipeline_state;

namespace {

const QString recordingSpoken = QStringLiteral("Идёт запись");

HudContent take(const char* timer) {
    return {
        .dot = true, .wave = true, .divider = true, .timer = QLatin1String(timer), .spoken = recordingSpoken};
}

HudContent busy(const QString& label) {
    return {.spinner = true, .status = label, .spoken = label};
}

} // namespace

TEST(HudContent, Full_HoldsWhatTheStateSays) {
    const QString message = QStringLiteral("Пустой ответ от сервера. Попробуйте ещё раз.");
    HudContent recording = take("00:07");
    recording.strongGlow = true;
    const std::vector<std::pair<PipelineState, HudContent>> table{
        {state::Idle{}, {}},
        {state::Recording{7.9}, recording},
        {state::StreamingRecording{7.9, {}, QStringLiteral("до")}, take("00:07")},
        {state::Transcribing{}, busy(QStringLiteral("Транскрибируем…"))},
        {state::Cleaning{}, busy(QStringLiteral("Подготавливаем…"))},
        {state::StreamingCleanup{QStringLiteral("до")}, busy(QStringLiteral("Очищаем…"))},
        {state::Error{message}, {.cross = true, .status = message, .spoken = message}},
    };
    for (const auto& [from, expected] : table)
        EXPECT_EQ(hudContent(from, false), expected) << "state " << from.index();
}

TEST(HudContent, StreamingRecordingWithPartialText_ShowsItAsItCameInsteadOfTheTimer) {
    const QString partial = QStringLiteral(" и тогда ");
    HudContent expected = take("");
    expected.partial = partial;
    EXPECT_EQ(hudContent(state::StreamingRecording{3, partial, {}}, false), expected);
}

TEST(HudContent, LatestPartialHoldsOnlySpaces_TheTimerShows) {
    for (const char* blank : {"", " ", "  \t ", "\t"})
        EXPECT_EQ(hudContent(state::StreamingRecording{3, QLatin1String(blank), {}}, false), take("00:03"));
}

TEST(HudContent, LatestPartialHoldsALineBreak_IsText) {
    EXPECT_EQ(hudContent(state::StreamingRecording{3, QStringLiteral("\n"), {}}, false).partial,
              QStringLiteral("\n"));
}

TEST(HudContent, Minimal_HoldsOneThing) {
    const QString message = QStringLiteral("Нет сети");
    const HudContent wave{.wave = true, .spoken = recordingSpoken};
    HudContent recording = wave;
    recording.strongGlow = true;
    const auto spinner = [](const char* spoken) {
        return HudContent{.spinner = true, .spoken = QString::fromUtf8(spoken)};
    };
    const std::vector<std::pair<PipelineState, HudContent>> table{
        {state::Idle{}, {}},
        {state::Recording{7}, recording},
        {state::StreamingRecording{7, {}, {}}, wave},
        {state::StreamingRecording{7, QStringLiteral("до"), {}}, wave},
        {state::Transcribing{}, spinner("Транскрибируем…")},
        {state::Cleaning{}, spinner("Подготавливаем…")},
        {state::StreamingCleanup{}, spinner("Очищаем…")},
        {state::Error{message}, {.cross = true, .spoken = message}},
    };
    for (const auto& [from, expected] : table)
        EXPECT_EQ(hudContent(from, true), expected) << "state " << from.index();
}

TEST(FormatTimer, Seconds_AreTruncatedAndMinutesDoNotWrap) {
    const std::vector<std::pair<double, const char*>> table{
        {0, "00:00"},    {0.99, "00:00"}, {9.5, "00:09"},   {59.999, "00:59"},
        {60, "01:00"},   {61, "01:01"},   {600, "10:00"},   {3599.9, "59:59"},
        {3600, "60:00"}, {3725, "62:05"}, {6000, "100:00"}, {-0.4, "00:00"},
    };
    for (const auto& [seconds, text] : table)
        EXPECT_EQ(formatTimer(seconds), QLatin1String(text)) << seconds;
}
