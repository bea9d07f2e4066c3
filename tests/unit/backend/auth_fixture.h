#pragma once

#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "backend/backend_error.h"
#include "foundation/user_defaults.h"
#include "support/fake_http_transport.h"
#include "support/hand_loop.h"
#include "support/outcome.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace velmora::test {

/// A signed-in session over a transport in the test's hand.
struct AuthFixture : testing::Test {
    AuthFixture() { store.save(QStringLiteral("access-1"), QStringLiteral("refresh-1")); }

    /// Answers the rotation that is the last request.
    void replyWithNewTokens(int number = 2) {
        ASSERT_EQ(transport.last().request.url.path(), QStringLiteral("/v1/auth/refresh"));
        transport.last().reply(200,
                               QStringLiteral(R"({"accessToken":"access-%1","refreshToken":"refresh-%1"})")
                                   .arg(number)
                                   .toUtf8());
    }

    QTemporaryDir root;
    HandLoop loop;
    FakeHttpTransport transport;
    UserDefaults defaults{root.path() + QStringLiteral("/defaults.json")};
    AuthStore store{root.path(), defaults};
    std::optional<AuthSession> owned{std::in_place, transport, store, loop,
                                     QUrl(QStringLiteral("https://api.example.org"))};
    AuthSession& session = *owned;
};

} // namespace velmora::test
