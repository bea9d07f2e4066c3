#include "backend/auth_store.h"
#include "e2e/session/program.h"
#include "foundation/user_defaults.h"
#include "foundation/user_folders.h"
#include "support/desktop/wait_until.h"
#include "support/loopback_http_server.h"
#include "support/onboarded_defaults.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr int connectionsToAHost = 6; // which Qt opens at a time

void runVelmora(const QStringList& arguments) {
    EXPECT_EQ(QProcess::execute(QStringLiteral(VELMORA_PROGRAM), arguments), 0);
}

} // namespace

// A backend that takes requests and doesn't answer them.
TEST(OwnConnectionsTest, OtherRequestsHang_TheDictationGoesOutAllTheSame) {
    LoopbackHttpServer server;
    int hanging = 0;
    bool dictated = false;
    server.onRequest = [&](LoopbackConnection&, const QByteArray& request) {
        if (request.startsWith("POST /v1/dictate "))
            dictated = true;
        else
            ++hanging;
    };
    QDir(applicationSupportFolder()).removeRecursively();
    QDir().mkpath(QFileInfo(defaultsPath()).path());
    QFile file(defaultsPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(onboardedDefaults()) > 0);
    file.close();
    {
        UserDefaults defaults(defaultsPath());
        AuthStore(applicationSupportFolder(), defaults)
            .save(QStringLiteral("access"), QStringLiteral("refresh"));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VelmorBackendURL"), server.url().toString());
    const Program application(QStringLiteral(VELMORA_PROGRAM), {}, environment);
    ASSERT_TRUE(application.says("tap active"));
    for (int i = 0; i < connectionsToAHost; ++i)
        runVelmora({}); // asks for the account anew
    ASSERT_TRUE(waitUntil([&] { return hanging >= connectionsToAHost; })) << hanging;

    runVelmora({QStringLiteral("--press")});
    QTest::qWait(600); // longer than the shortest recording
    runVelmora({QStringLiteral("--release")});
    EXPECT_TRUE(waitUntil([&] { return dictated; })) << application.output().toStdString();
}
