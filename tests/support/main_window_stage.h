#pragma once

#include "support/fake_color_scheme.h"
#include "support/history_stage.h"
#include "support/settings_stage.h"
#include "ui/kit/ui_engine.h"
#include "ui/kit/v_theme.h"
#include "ui/main_window/main_window.h"
#include "ui/qml_engine.h"

namespace velmora::test {

/// The main window itself, as the program makes it, on a history and rights in the test's hand.
struct MainWindowStage : HistoryStage {
    [[nodiscard]] MainWindow& openWindow() {
        window = std::make_unique<MainWindow>(MainWindow::Neighbours{
            engine, loop, {.store = store, .pasteboard = desktop, .shared = stage.neighbours}});
        window->open();
        return *window;
    }

    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    AuthStore auth{folder.path(), defaults};
    FakeWorkspace workspace;
    InfoDictionary info{{}};
    SettingsStage stage{loop, defaults, settings, auth, workspace, info};
    FakePrivacyRights& rights = stage.rights;
    PermissionManager& perms = stage.perms;
    AppNavigator& nav = stage.nav;
    UiEngine engine{makeQmlEngine};
    std::unique_ptr<MainWindow> window;
};

} // namespace velmora::test
