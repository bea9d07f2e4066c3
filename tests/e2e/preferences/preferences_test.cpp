// The client's session and the real server: the preferences that follow an account.

#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "backend/qt_http_transport.h"
#include "e2e/session/free_port.h"
#include "e2e/session/program.h"
#include "e2e/session/sign_in_page.h"
#include "foundation/qt_main_loop.h"
#include "foundation/user_defaults.h"
#include "support/desktop/wait_until.h"
#include "support/outcome.h"

#include <QScopeGuard>
#include <QTemporaryDir>
#include <QUrlQuery>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

/// Sends as the transport below it does, and keeps count of the changes of preferences.
class CountingTransport final : public HttpTransport {
public:
    explicit CountingTransport(HttpTransport& transport)
        : m_transport(transport) {}

    Task<OpenHttpReply> open(HttpRequest request, std::stop_token stop) override {
        const bool isPatch = request.method == "PATCH";
        sent += isPatch ? 1 : 0;
        const auto answered = qScopeGuard([this, isPatch] { finished += isPatch ? 1 : 0; });
        co_return co_await m_transport.open(std::move(request), std::move(stop));
    }

    int sent = 0;
    int finished = 0;

private:
    HttpTransport& m_transport;
};

/// A change of one of them.
template<typename T>
PreferencesPatch change(std::optional<T> PreferencesPatch::*field, T value) {
    PreferencesPatch patch;
    patch.*field = std::move(value);
    return patch;
}

PreferencesPatch language(const char* name) {
    return change(&PreferencesPatch::transcribeLanguage, QString::fromUtf8(name));
}

/// One machine of the account's owner.
struct Client {
    Client(const QUrl& url, const QUrlQuery& tokens)
        : session(transport, store, loop, url) {
        store.save(tokens.queryItemValue(QStringLiteral("token")),
                   tokens.queryItemValue(QStringLiteral("refresh")));
    }

    /// What the server has, read anew.
    std::optional<BackendPreferences> refreshed() {
        const Outcome<> refresh(session.refreshMe());
        EXPECT_TRUE(waitUntil([&] { return refresh.isDone(); }));
        return session.preferences();
    }

    QTemporaryDir folder;
    QtMainLoop loop;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AuthStore store{folder.path(), defaults};
    QtHttpTransport wire{loop};
    CountingTransport transport{wire};
    AuthSession session;
};

struct PreferencesTest : testing::Test {
    PreferencesTest() {
        start();
        const QString page = url.toString() + QStringLiteral("/auth?source=app&state=s");
        tokens = QUrlQuery(
            QUrl(createAccount(page, QStringLiteral("ann@example.org"), QStringLiteral("correct horse"))));
    }

    void start() {
        // A recogniser that needs no model keeps the starts short.
        server.emplace(QStringLiteral(VELMORA_SERVER_PROGRAM),
                       QStringList{QStringLiteral("--listen"), url.authority(), QStringLiteral("--data"),
                                   data.path(), QStringLiteral("--recogniser"),
                                   QStringLiteral("openai=http://127.0.0.1:9")});
        ASSERT_TRUE(server->says("listens on"));
    }

    QTemporaryDir data;
    QUrl url{QStringLiteral("http://127.0.0.1:%1").arg(freePort())};
    std::optional<Program> server;
    QUrlQuery tokens;
};

} // namespace

TEST_F(PreferencesTest, ThreeChangesInQuickSuccession_AreOneRequest_AndTheServerHasThem) {
    Client client(url, tokens);
    ASSERT_EQ(client.refreshed(), BackendPreferences());
    const BackendPreferences wanted{.transcribeLanguage = QStringLiteral("English"),
                                    .cleanupEnabled = false,
                                    .devModeEnabled = true,
                                    .meetingStorageMode = std::nullopt};
    client.session.patchPreferences(language("English"));
    client.session.patchPreferences(change(&PreferencesPatch::cleanupEnabled, false));
    client.session.patchPreferences(change(&PreferencesPatch::devModeEnabled, true));
    EXPECT_EQ(client.session.preferences(), wanted);
    EXPECT_EQ(client.transport.sent, 0);
    ASSERT_TRUE(waitUntil([&] { return client.transport.finished > 0; }));
    EXPECT_EQ(client.refreshed(), wanted);
    EXPECT_EQ(client.transport.sent, 1);

    // They follow the account to another machine.
    Client other(url, tokens);
    EXPECT_EQ(other.refreshed(), wanted);
}

TEST_F(PreferencesTest, ServerGone_ChangeStaysOnTheScreenUntilTheServersRecordIsRead) {
    Client client(url, tokens);
    ASSERT_EQ(client.refreshed(), BackendPreferences());
    server.reset();
    client.session.patchPreferences(change(&PreferencesPatch::devModeEnabled, true));
    ASSERT_TRUE(waitUntil([&] { return client.transport.finished == 1; }));
    EXPECT_TRUE(client.session.preferences()->devModeEnabled);
    EXPECT_TRUE(client.refreshed()->devModeEnabled); // there is nothing to read from
    start();
    EXPECT_EQ(client.refreshed(), BackendPreferences());
    EXPECT_EQ(client.transport.sent, 1);
}

TEST_F(PreferencesTest, ServerRefusesTheValue_ChangeStaysOnTheScreenUntilTheServersRecordIsRead) {
    Client client(url, tokens);
    ASSERT_EQ(client.refreshed(), BackendPreferences());
    client.session.patchPreferences(language("не язык"));
    ASSERT_TRUE(waitUntil([&] { return client.transport.finished == 1; }));
    // Once this is answered the refusal has been seen to its end.
    const Outcome<BackendPreferences> read(
        client.session.authedRequest<BackendPreferences>(QStringLiteral("/v1/me/preferences")));
    ASSERT_TRUE(waitUntil([&] { return read.isDone(); }));
    EXPECT_EQ(read.value(), BackendPreferences());
    EXPECT_EQ(client.session.preferences()->transcribeLanguage, QStringLiteral("не язык"));
    EXPECT_EQ(client.refreshed(), BackendPreferences());
}
