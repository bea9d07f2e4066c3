#pragma once

#include "support/history_stage.h"
#include "support/settings_stage.h"
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
    FakeWorkspace workspace;
    InfoDictionary info{{{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.2.0")},
                         {QStringLiteral("VelmorLandingURL"), QStringLiteral("https://velmora.app/")}}};
    SettingsStage stage{loop, defaults, settings, auth, workspace, info};
    FakePrivacyRights& rights = stage.rights;
    PermissionManager& perms = stage.perms;
    AppNavigator& nav = stage.nav;
    MainWindowModel model{{.store = store, .pasteboard = desktop, .shared = stage.neighbours}};
    ViewHost host; // last: its view looks at the rest
};

} // namespace velmora::test
