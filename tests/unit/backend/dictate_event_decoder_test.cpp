#include "backend/dictate_event_decoder.h"
#include "foundation/log.h"

#include <QStringList>

#include <gmock/gmock.h>

using namespace velmora;
using testing::ElementsAre;

namespace {

struct DictateEventDecoder : testing::Test {
    QStringList lines;
    LogCapture capture{[this](const QString& line) { lines.append(line); }};
};

/// What "done" may look like one day.
struct GrownDonePayload {
    QString text;
    qint64 wordCount = 0;
    std::optional<qint64> credits;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("text", &GrownDonePayload::text),
                          json::field("wordCount", &GrownDonePayload::wordCount),
                          json::field("credits", &GrownDonePayload::credits));
    }
};

} // namespace

TEST_F(DictateEventDecoder, GoodEvents_AreDecoded) {
    EXPECT_EQ(decodeDictateEvent({"status", R"({"stage":"cleanup"})"}),
              DictateEvent(dictate_event::Status{QStringLiteral("cleanup")}));
    EXPECT_EQ(decodeDictateEvent({"chunk", R"({"delta":"при вет "})"}),
              DictateEvent(dictate_event::Chunk{QStringLiteral("при вет ")}));
    EXPECT_EQ(decodeDictateEvent({"done", R"({"text":"привет","wordCount":1})"}),
              DictateEvent(dictate_event::Done{QStringLiteral("привет"), 1}));
    EXPECT_EQ(decodeDictateEvent({"error", R"({"code":"c","message":"m"})"}),
              DictateEvent(dictate_event::Error{QStringLiteral("c"), QStringLiteral("m")}));
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(DictateEventDecoder, ErrorWithAnEmptyObject_HasTheDefaults) {
    EXPECT_EQ(
        decodeDictateEvent({"error", "{}"}),
        DictateEvent(dictate_event::Error{QStringLiteral("unknown"), QStringLiteral("Ошибка сервера")}));
}

TEST_F(DictateEventDecoder, DataJoinedOfTwoLines_IsJSONAllTheSame) {
    EXPECT_EQ(decodeDictateEvent({"chunk", "{\"delta\":\n\"x\"}"}),
              DictateEvent(dictate_event::Chunk{QStringLiteral("x")}));
}

TEST_F(DictateEventDecoder, UnknownName_YieldsNothingAndLogsNothing) {
    for (const char* name : {"Chunk", "ping", "", "done "})
        EXPECT_EQ(decodeDictateEvent({name, R"({"delta":"x","text":"x","wordCount":1})"}), std::nullopt);
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(DictateEventDecoder, BadStatusAndBadError_YieldNothingAndLogNothing) {
    EXPECT_EQ(decodeDictateEvent({"status", "{}"}), std::nullopt);
    EXPECT_EQ(decodeDictateEvent({"error", "nope"}), std::nullopt);
    EXPECT_EQ(decodeDictateEvent({"error", R"({"code":1})"}), std::nullopt);
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(DictateEventDecoder, BadChunk_IsLoggedWithoutItsText) {
    EXPECT_EQ(decodeDictateEvent({"chunk", R"({"text":"secret"})"}), std::nullopt);
    EXPECT_THAT(lines,
                ElementsAre(QStringLiteral("Velmora: failed to decode SSE chunk: delta: expected a string")));
}

TEST_F(DictateEventDecoder, BadDone_IsLoggedWithTheFirst200Characters) {
    const QString text(300, QChar(u'я'));
    EXPECT_EQ(decodeDictateEvent({"done", QStringLiteral(R"({"text":"%1"})").arg(text).toUtf8()}),
              std::nullopt);
    EXPECT_THAT(lines, ElementsAre(QStringLiteral(
                                       "Velmora: failed to decode SSE done: wordCount: expected an integer "
                                       "payload preview: {\"text\":\"") +
                                   text.left(191)));
}

TEST_F(DictateEventDecoder, DoneWithAnExtraKeyOfUnexpectedForm_YieldsDoneThroughTheMinimalRecord) {
    const QByteArray data = R"({"text":"t","wordCount":2,"credits":"many"})";
    EXPECT_EQ(decodeDictateEvent({"done", data}), DictateEvent(dictate_event::Done{QStringLiteral("t"), 2}));
    EXPECT_TRUE(lines.isEmpty());
    EXPECT_EQ(decodeDone<GrownDonePayload>(data), (dictate_event::Done{QStringLiteral("t"), 2}));
    EXPECT_THAT(lines,
                ElementsAre(QStringLiteral("Velmora: SSE done read through the minimal payload, preview: ") +
                            QString::fromUtf8(data)));
    EXPECT_EQ(decodeDone<GrownDonePayload>(R"({"text":"t","wordCount":2,"credits":3})").wordCount, 2);
    EXPECT_EQ(lines.size(), 1);
}
