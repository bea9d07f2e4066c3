#pragma once

#include "backend/auth_store.h"
#include "core/permission_manager.h"
#include "foundation/info_dictionary.h"
#include "support/history_stage.h"
#include "support/fake_privacy_rights.h"
#include "support/ui/view_host.h"
#include "ui/main_window/main_window_model.h"

namespace velmora::test {

/// The main window's view on a history and rights in the test's hand.
struct WindowFixture : testing::Test, HistoryStage {
    void show(QSize size = {980, 680}) {
        host.show("MainWindow", "MainWindowView", {{QStringLiteral("model"), QVariant::fromValue(&model)}},
                  size);
    }
    /// Every text that the next frame shows.
    [[nodiscard]] QStringList texts() const {
        (void)host.grab(); // lists take their rows when a frame is drawn
        return host.texts();
    }
    /// The row that has the keyboard focus, else -1.
    [[nodiscard]] int focusedRow() const {
        for (QQuickItem* item = host.focused(); item; item = item->parentItem())
            if (item->property("rowName").isValid())
                return item->property("index").toInt();
        return -1;
    }

    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    AuthStore auth{folder.path(), defaults};
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    AppNavigator nav;
    FakeWorkspace workspace;
    InfoDictionary info{{{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.2.0")},
                         {QStringLiteral("VelmorLandingURL"), QStringLiteral("https://velmora.app/")}}};
    MainWindowModel model{{.loop = loop,
                           .nav = nav,
                           .perms = perms,
                           .settings = settings,
                           .store = store,
                           .authStore = auth,
                           .authSession = nullptr,
                           .pasteboard = desktop,
                           .workspace = workspace,
                           .info = info,
                           .settingsPath = QStringLiteral("/config/defaults.json")}};
    ViewHost host; // last: its view looks at the rest
};

} // namespace velmora::test
