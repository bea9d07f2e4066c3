#include "backend/sse_reader.h"

#include <gmock/gmock.h>

using namespace velmora;

namespace {

std::vector<SseEvent> readAll(QByteArrayView bytes, qsizetype pieceSize) {
    SseReader reader;
    std::vector<SseEvent> events;
    for (qsizetype from = 0; from < bytes.size(); from += pieceSize) {
        for (SseEvent& event : reader.feed(bytes.sliced(from, std::min(pieceSize, bytes.size() - from))))
            events.push_back(std::move(event));
    }
    if (std::optional<SseEvent> event = reader.finish())
        events.push_back(*std::move(event));
    return events;
}

} // namespace

TEST(SseReader, AnySplit_GivesTheSameEvents) {
    const QByteArray bytes = "event: a\ndata: один\n\n\n\nevent:b\r\ndata:\ttwo \ndata: 2\n\n: comment\n\n\n"
                             "id: 7\nevent: x\nevent: c\ndata: три\n\nevent: d\ndata: last";
    const std::vector<SseEvent> expected{{"a", "один"}, {"b", "two\n2"}, {"c", "три"}, {"d", "last"}};
    for (qsizetype size = 1; size <= bytes.size(); ++size)
        EXPECT_EQ(readAll(bytes, size), expected) << size;
}

TEST(SseReader, Feed_YieldsWithTheByteThatCompletesTheBlock) {
    SseReader reader;
    EXPECT_TRUE(reader.feed("event: a\ndata: 1\n").empty());
    EXPECT_EQ(reader.feed("\n"), (std::vector<SseEvent>{{"a", "1"}}));
    EXPECT_EQ(reader.finish(), std::nullopt);
}

TEST(SseReader, CharacterSplitBetweenPieces_IsWhole) {
    const QByteArray bytes = "event: chunk\ndata: я\n\n";
    const qsizetype middle = bytes.indexOf("\xd1") + 1;
    SseReader reader;
    EXPECT_TRUE(reader.feed(bytes.first(middle)).empty());
    EXPECT_EQ(reader.feed(bytes.sliced(middle)), (std::vector<SseEvent>{{"chunk", "я"}}));
}

TEST(SseReader, End_WithoutABlankLine_YieldsTheFinalBlock) {
    EXPECT_EQ(readAll("event: done\ndata: {}\n", 4), (std::vector<SseEvent>{{"done", "{}"}}));
}

TEST(SseReader, BlocksSeparatedByCRLFCRLF_AreOneBlock) {
    EXPECT_EQ(readAll("event: a\r\ndata: 1\r\n\r\nevent: b\r\ndata: 2\r\n\r\n", 100),
              (std::vector<SseEvent>{{"b", "1\n2"}}));
}

TEST(SseReader, ThreeLineFeeds_TheThirdBeginsTheNextBlock) {
    EXPECT_EQ(readAll("event: a\ndata: 1\n\n\nevent: b\ndata: 2\n\n", 3),
              (std::vector<SseEvent>{{"a", "1"}, {"b", "2"}}));
}

TEST(ParseEventBlock, DataWithoutAName_YieldsNothing) {
    EXPECT_EQ(parseEventBlock("data: {}"), std::nullopt);
}

TEST(ParseEventBlock, NameWithoutData_YieldsNothing) {
    EXPECT_EQ(parseEventBlock("event: done"), std::nullopt);
    EXPECT_EQ(parseEventBlock(""), std::nullopt);
}

TEST(ParseEventBlock, EmptyNameAndEmptyData_AreThere) {
    EXPECT_EQ(parseEventBlock("event:\ndata:"), (SseEvent{"", ""}));
    EXPECT_EQ(parseEventBlock("event: a\ndata:\ndata: "), (SseEvent{"a", "\n"}));
}

TEST(ParseEventBlock, NotUTF8_YieldsNothing) {
    EXPECT_EQ(parseEventBlock("event: a\ndata: \xff"), std::nullopt);
    EXPECT_EQ(parseEventBlock("event: a\ndata: 1\n: \xd1"), std::nullopt);
    EXPECT_EQ(parseEventBlock("event: a\ndata: \xed\xa0\x80"), std::nullopt); // half a surrogate pair
}

TEST(ParseEventBlock, LinesThatOnlyResembleFields_AreIgnored) {
    EXPECT_EQ(parseEventBlock("event: a\n data: 1\nData: 2\ndata 3\ndata: 4"), (SseEvent{"a", "4"}));
}

TEST(ParseEventBlock, CarriageReturns_AreStrippedFromBothEndsOfTheLine) {
    EXPECT_EQ(parseEventBlock("\r\revent: a\r\r\n\rdata: 1\r2 \r"), (SseEvent{"a", "1\r2"}));
}
