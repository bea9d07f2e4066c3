#pragma once

#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "backend/sign_in.h"
#include "core/permission_manager.h"
#include "foundation/info_dictionary.h"
#include "support/dictation_on_fakes.h"
#include "support/fake_http_transport.h"
#include "support/fake_privacy_rights.h"
#include "ui/onboarding/onboarding_model.h"

#include <QUrl>

namespace velmora::test {

/// What a new user is led through, on fakes. The world and its account outlive the stage.
class OnboardingStage {
public:
    OnboardingStage(DictationOnFakes& world, AuthStore& authStore)
        : auth(authStore)
        , session(transport, auth, world.loop, QUrl(QStringLiteral("https://api.example.org")))
        , signIn(auth, world.workspace, QStringLiteral("https://velmora.example.org"))
        , neighbours{.loop = world.loop,
                     .defaults = world.defaults,
                     .settings = world.settings,
                     .perms = perms,
                     .pipeline = world.pipeline,
                     .authStore = auth,
                     .authSession = session,
                     .signIn = signIn,
                     .info = info,
                     .startTestRecording = [this] { ++testRecordings; }} {
        transport.onRequest = [this](FakeExchange& exchange) {
            if (!email.isEmpty())
                exchange.reply(200, R"({"user":{"id":"u1","email":")" + email.toUtf8() +
                                        R"(","isAdmin":false,"createdAt":"2026-01-01T00:00:00Z"},)"
                                        R"("preferences":{"transcribeLanguage":"ru","cleanupEnabled":true,)"
                                        R"("devModeEnabled":false}})");
        };
    }
    OnboardingStage(const OnboardingStage&) = delete;
    OnboardingStage& operator=(const OnboardingStage&) = delete;

    /// The callback of the browser has come.
    void signedIn() { auth.save(QStringLiteral("access"), QStringLiteral("refresh")); }

    AuthStore& auth;
    QString email = QStringLiteral("anna@example.org"); ///< what the server says; it is silent when empty
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    FakeHttpTransport transport;
    AuthSession session;
    SignIn signIn;
    InfoDictionary info{{{QStringLiteral("VelmorBackendURL"), QStringLiteral("https://api.velmora.app")}}};
    int testRecordings = 0;
    const OnboardingNeighbours neighbours;
};

} // namespace velmora::test
