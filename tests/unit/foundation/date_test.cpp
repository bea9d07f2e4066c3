#include "foundation/date.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using namespace velmora;

namespace {

constexpr Date moment{std::chrono::sys_days{std::chrono::year{2026} / 3 / 1} + 10h + 20min + 30s};

} // namespace

TEST(Date, ParseISO8601_WithAndWithoutFractions_BothDecode) {
    EXPECT_EQ(parseISO8601(QStringLiteral("2026-03-01T10:20:30Z")), moment);
    EXPECT_EQ(parseISO8601(QStringLiteral("2026-03-01T10:20:30.123Z")), moment + 123ms);
    EXPECT_EQ(parseISO8601(QStringLiteral("2026-03-01T10:20:30.5Z")), moment + 500ms);
    EXPECT_EQ(parseISO8601(QStringLiteral("2026-03-01T10:20:30.123456789Z")), moment + 123456us);
}

TEST(Date, ParseISO8601_Offsets_AreTakenIntoAccount) {
    EXPECT_EQ(parseISO8601(QStringLiteral("2026-03-01T13:20:30+03:00")), moment);
    EXPECT_EQ(parseISO8601(QStringLiteral("2026-03-01T05:50:30-0430")), moment);
}

TEST(Date, ParseISO8601_AnythingElse_IsNone) {
    for (const char* text :
         {"", "2026-03-01", "2026-03-01 10:20:30Z", "2026-03-01T10:20:30", "2026-13-01T10:20:30Z",
          "2026-02-30T10:20:30Z", "2026-03-01T24:20:30Z", "2026-03-01T10:20:30.Z", "2026-03-01T10:20:30Z\n",
          " 2026-03-01T10:20:30Z", "2026-03-01T10:20:30+99:00"})
        EXPECT_EQ(parseISO8601(QString::fromUtf8(text)), std::nullopt) << text;
}

TEST(Date, FormatISO8601_FractionsOfASecond_AreLeftOut) {
    EXPECT_EQ(formatISO8601(moment + 999ms), QStringLiteral("2026-03-01T10:20:30Z"));
}

TEST(Date, ReferenceSeconds_RoundTrip_KeepsMicroseconds) {
    EXPECT_EQ(fromReferenceSeconds(toReferenceSeconds(moment + 123456us)), moment + 123456us);
    EXPECT_EQ(toReferenceSeconds(fromUnixSeconds(978307200)), 0.0);
}
