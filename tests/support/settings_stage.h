#pragma once

#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "core/app_settings.h"
#include "core/hotkey_monitor.h"
#include "core/level_test.h"
#include "core/permission_manager.h"
#include "core/relauncher.h"
#include "foundation/info_dictionary.h"
#include "support/fake_audio.h"
#include "support/fake_audio_inputs.h"
#include "support/fake_desktop.h"
#include "support/fake_event_tap.h"
#include "support/fake_http_transport.h"
#include "support/fake_key_event_monitors.h"
#include "support/fake_privacy_rights.h"
#include "support/hand_loop.h"
#include "ui/navigation/app_navigator.h"
#include "ui/settings/settings_neighbours.h"

#include <QUrl>

namespace velmora::test {

/// What the settings show and change beyond the settings themselves, on fakes.
class SettingsStage {
public:
    /// All of these outlive the stage.
    SettingsStage(HandLoop& loop, UserDefaults& defaults, AppSettings& settings, AuthStore& auth,
                  FakeWorkspace& workspace, const InfoDictionary& info)
        : session(transport, auth, loop, QUrl(QStringLiteral("https://api.example.org")))
        , hotkey(loop, defaults, taps)
        , levelTest(loop, defaults, levelEngine)
        , relauncher({.loop = loop,
                      .executable = QStringLiteral("/usr/bin/velmora"),
                      .processId = 1,
                      .start = [this](const QString&, const QStringList&) { ++relaunches; },
                      .dismissModalUIThen = [](const std::function<void()>& then) { then(); },
                      .terminate = [] {}})
        , neighbours{.loop = loop,
                     .nav = nav,
                     .perms = perms,
                     .settings = settings,
                     .defaults = defaults,
                     .authStore = auth,
                     .authSession = session,
                     .workspace = workspace,
                     .info = info,
                     .relauncher = relauncher,
                     .hotkey = hotkey,
                     .keys = keys,
                     .inputs = inputs,
                     .levelTest = levelTest} {}

    /// The reply of the account's page.
    [[nodiscard]] static QByteArray account(const QByteArray& email, const QByteArray& language = "ru") {
        return R"({"user":{"id":"u1","email":")" + email +
               R"(","isAdmin":false,"createdAt":"2026-01-01T00:00:00Z"},"preferences":{"transcribeLanguage":")" +
               language + R"(","cleanupEnabled":true,"devModeEnabled":false}})";
    }
    /// Signs in; nothing is known of the account yet.
    void signIn() const { neighbours.authStore.save(QStringLiteral("access"), QStringLiteral("refresh")); }
    /// Signs in, and reads the account.
    void signIn(const QByteArray& email, const QByteArray& language = "ru") {
        signIn();
        m_tasks.start(QStringLiteral("account"), session.refreshMe());
        transport.last().reply(200, account(email, language));
    }

    AppNavigator nav;
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    FakeHttpTransport transport;
    AuthSession session;
    FakeEventTapFactory taps;
    HotkeyMonitor hotkey;
    FakeKeyEventMonitors keys;
    FakeAudioInputs inputs;
    FakeAudioEngine levelEngine;
    LevelTest levelTest;
    int relaunches = 0;
    Relauncher relauncher;
    const SettingsNeighbours neighbours;

private:
    TaskScope m_tasks;
};

} // namespace velmora::test
