#include "foundation/json_coder.h"

#include <gmock/gmock.h>

using namespace velmora;
using json::Coder;
using json::DateForm;
using json::DecodingError;

namespace {

struct Inner {
    qint64 count = 0;

    static constexpr auto jsonFields() { return std::tuple(json::field("count", &Inner::count)); }
    bool operator==(const Inner&) const = default;
};

struct Sample {
    QString name;
    std::optional<QString> note;
    bool flag = false;
    double ratio = 0;
    std::vector<Inner> inners;
    std::optional<Date> when;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("name", &Sample::name), json::field("note", &Sample::note),
                          json::field("flag", &Sample::flag), json::field("ratio", &Sample::ratio),
                          json::field("inners", &Sample::inners), json::field("when", &Sample::when));
    }
    bool operator==(const Sample&) const = default;
};

constexpr Coder backend(DateForm::ISO8601);
constexpr Coder local(DateForm::ReferenceSeconds);

QString failureOf(const QByteArray& bytes) {
    try {
        (void)backend.decode<Sample>(bytes);
    } catch (const DecodingError& error) {
        return error.localizedDescription();
    }
    return QStringLiteral("no failure");
}

const QByteArray minimal = R"({"name":"n","flag":true,"ratio":1,"inners":[]})";

} // namespace

TEST(JsonCoder, RoundTrip_AllFieldsPresent_GivesTheSameValue) {
    const Sample sample{QStringLiteral("имя"),
                        QStringLiteral("заметка"),
                        true,
                        0.25,
                        {{1}, {2}},
                        Date(std::chrono::seconds(1'700'000'000))};
    EXPECT_EQ(backend.decode<Sample>(backend.encode(sample)), sample);
    EXPECT_EQ(local.decode<Sample>(local.encode(sample)), sample);
}

TEST(JsonCoder, Encode_AbsentOptional_LeavesTheKeyOutAndWritesNoNull) {
    const QByteArray bytes = backend.encode(Sample{QStringLiteral("n"), {}, false, 0, {}, {}});
    EXPECT_FALSE(bytes.contains("note"));
    EXPECT_FALSE(bytes.contains("null"));
}

TEST(JsonCoder, Decode_OptionalMissingOrNull_IsEmpty) {
    EXPECT_EQ(backend.decode<Sample>(minimal).note, std::nullopt);
    const QByteArray withNull = R"({"name":"n","flag":true,"ratio":1,"inners":[],"note":null})";
    EXPECT_EQ(backend.decode<Sample>(withNull).note, std::nullopt);
}

TEST(JsonCoder, Decode_UnknownKeys_AreIgnored) {
    EXPECT_NO_THROW(
        (void)backend.decode<Sample>(R"({"name":"n","flag":true,"ratio":1,"inners":[],"zzz":[1,{}]})"));
}

TEST(JsonCoder, Decode_RequiredKeyMissing_FailsTheWholeValueNamingTheKey) {
    EXPECT_EQ(failureOf(R"({"flag":true,"ratio":1,"inners":[]})"), QStringLiteral("name: expected a string"));
    EXPECT_EQ(failureOf(R"({"name":"n","flag":true,"ratio":1,"inners":[{}]})"),
              QStringLiteral("inners: count: expected an integer"));
}

TEST(JsonCoder, Decode_WrongTypes_Fail) {
    EXPECT_EQ(failureOf(R"({"name":1,"flag":true,"ratio":1,"inners":[]})"),
              QStringLiteral("name: expected a string"));
    EXPECT_EQ(failureOf(R"({"name":"n","flag":1,"ratio":1,"inners":[]})"),
              QStringLiteral("flag: expected a boolean"));
    EXPECT_EQ(failureOf(R"({"name":"n","flag":true,"ratio":"1","inners":[]})"),
              QStringLiteral("ratio: expected a number"));
    EXPECT_EQ(failureOf(R"({"name":"n","flag":true,"ratio":1,"inners":{}})"),
              QStringLiteral("inners: expected an array"));
    EXPECT_EQ(failureOf("[]"), QStringLiteral("expected an object"));
    EXPECT_TRUE(failureOf("{nope").startsWith(QStringLiteral("not JSON")));
}

TEST(JsonCoder, Decode_IntegerWithFractionOrOutOfRange_Fails) {
    EXPECT_EQ(backend.decode<Inner>(R"({"count":9007199254740993})").count, 9007199254740993);
    EXPECT_EQ(backend.decode<Inner>(R"({"count":-3})").count, -3);
    EXPECT_THROW((void)backend.decode<Inner>(R"({"count":1.5})"), DecodingError);
    EXPECT_THROW((void)backend.decode<Inner>(R"({"count":1e300})"), DecodingError);
}

TEST(JsonCoder, Decode_DateThatIsNone_SaysWhichText) {
    EXPECT_EQ(failureOf(R"({"name":"n","flag":true,"ratio":1,"inners":[],"when":"gestern"})"),
              QStringLiteral("Cannot parse date: gestern"));
}

TEST(JsonCoder, ReferenceSeconds_StartOf2001_IsZero) {
    const Sample sample{QStringLiteral("n"), {}, false, 0, {}, Date(std::chrono::seconds(978'307'200))};
    EXPECT_TRUE(local.encode(sample).contains(R"("when":0)"));
}
