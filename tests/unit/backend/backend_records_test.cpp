#include "backend/any_codable.h"
#include "backend/backend_coder.h"
#include "backend/me_response.h"
#include "backend/preferences_patch.h"

#include <gmock/gmock.h>

using namespace velmora;

TEST(AnyCodable, Scalars_KeepTheirTypeBothWays) {
    const QByteArray bytes = R"({"b":true,"d":0.5,"i":-3,"n":null,"s":"1"})";
    const auto values = backendCoder.decode<QMap<QString, AnyCodable>>(bytes);
    EXPECT_EQ(values.value(QStringLiteral("b")), AnyCodable{true});
    EXPECT_EQ(values.value(QStringLiteral("i")), AnyCodable{qint64(-3)});
    EXPECT_EQ(values.value(QStringLiteral("d")), AnyCodable{0.5});
    EXPECT_EQ(values.value(QStringLiteral("s")), AnyCodable{QStringLiteral("1")});
    EXPECT_EQ(values.value(QStringLiteral("n")), AnyCodable{});
    EXPECT_EQ(backendCoder.encode(values), bytes);
}

TEST(AnyCodable, ArraysAndObjects_AreNull) {
    const auto values = backendCoder.decode<QMap<QString, AnyCodable>>(R"({"a":[1],"o":{"x":1}})");
    EXPECT_EQ(backendCoder.encode(values), R"({"a":null,"o":null})");
}

TEST(BackendUser, EmailVerifiedAt_MayBeAbsentOrNull_TheRestMayNot) {
    const QByteArray full = R"({"id":"u","email":"e","isAdmin":true,"createdAt":"2026-01-01T00:00:00Z"})";
    EXPECT_EQ(backendCoder.decode<BackendUser>(full).emailVerifiedAt, std::nullopt);
    EXPECT_NO_THROW(
        (void)backendCoder.decode<BackendUser>(QByteArray(full).replace("}", R"(,"emailVerifiedAt":null})")));
    for (const char* key : {"\"id\"", "\"email\"", "\"isAdmin\"", "\"createdAt\""})
        EXPECT_THROW((void)backendCoder.decode<BackendUser>(QByteArray(full).replace(key, "\"x\"")),
                     json::DecodingError)
            << key;
}

TEST(BackendUser, Dates_WithAndWithoutFractions_Decode) {
    const QByteArray user = R"({"id":"u","email":"e","isAdmin":true,"createdAt":"2026-01-01T00:00:00.250Z",)"
                            R"("emailVerifiedAt":"2026-01-01T03:00:00+03:00"})";
    const auto decoded = backendCoder.decode<BackendUser>(user);
    const Date newYear{std::chrono::sys_days{std::chrono::year{2026} / 1 / 1}};
    EXPECT_EQ(decoded.createdAt, newYear + std::chrono::milliseconds(250));
    EXPECT_EQ(decoded.emailVerifiedAt, newYear);
}

TEST(BackendPreferences, AsConstructed_AreThoseOfANewUser) {
    EXPECT_EQ(backendCoder.encode(BackendPreferences()),
              R"({"cleanupEnabled":true,"devModeEnabled":false,"transcribeLanguage":"ru"})");
}

TEST(PreferencesPatch, Encode_LeavesOutWhatDoesNotChange) {
    EXPECT_EQ(backendCoder.encode(PreferencesPatch()), "{}");
    PreferencesPatch patch;
    patch.devModeEnabled = false;
    patch.meetingStorageMode = QStringLiteral("drive");
    EXPECT_EQ(backendCoder.encode(patch), R"({"devModeEnabled":false,"meetingStorageMode":"drive"})");
}
