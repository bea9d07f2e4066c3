#include "backend/backend_url.h"

#include <gmock/gmock.h>

using namespace velmora;

namespace {

InfoDictionary with(const QString& key, const QJsonValue& value) {
    return InfoDictionary(QJsonObject{{key, value}});
}

const QString backendKey = QStringLiteral("VelmorBackendURL");
const QString landingKey = QStringLiteral("VelmorLandingURL");

} // namespace

TEST(BackendURL, KeyAbsentOrNoString_IsTheDefault) {
    const QUrl standard(QStringLiteral("https://api.velmora.app"));
    EXPECT_EQ(backendURL(InfoDictionary({})), standard);
    EXPECT_EQ(backendURL(with(backendKey, 7)), standard);
    EXPECT_EQ(landingURL(InfoDictionary({})), QStringLiteral("https://velmora.app"));
    EXPECT_EQ(landingURL(with(landingKey, QJsonArray())), QStringLiteral("https://velmora.app"));
}

TEST(BackendURL, KeyPresent_IsTaken) {
    EXPECT_EQ(backendURL(with(backendKey, QStringLiteral("http://127.0.0.1:8080/api"))),
              QUrl(QStringLiteral("http://127.0.0.1:8080/api")));
    EXPECT_EQ(landingURL(with(landingKey, QStringLiteral("http://l/"))), QStringLiteral("http://l/"));
}

TEST(BackendURLDeathTest, NotAURL_EndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // other tests may have left threads of Qt's
    for (const char* text : {"", "https://bad host/", "http://[1"}) {
        const InfoDictionary info = with(backendKey, QString::fromLatin1(text));
        EXPECT_EXIT((void)backendURL(info), testing::ExitedWithCode(EXIT_FAILURE),
                    testing::HasSubstr(std::string("VelmorBackendURL is not a valid URL: ") + text + "\n"));
    }
}
