#pragma once

#include "backend/auth_store.h"
#include "foundation/info_dictionary.h"
#include "support/fake_color_scheme.h"
#include "support/fake_privacy_rights.h"
#include "support/history_stage.h"
#include "ui/kit/ui_engine.h"
#include "ui/kit/v_theme.h"
#include "ui/main_window/main_window.h"
#include "ui/qml_engine.h"

namespace velmora::test {

/// The main window itself, as the program makes it, on a history and rights in the test's hand.
struct MainWindowStage : HistoryStage {
    [[nodiscard]] MainWindow& openWindow() {
        window = std::make_unique<MainWindow>(MainWindow::Neighbours{engine,
                                                                     loop,
                                                                     {.loop = loop,
                                                                      .nav = nav,
                                                                      .perms = perms,
                                                                      .settings = settings,
                                                                      .store = store,
                                                                      .authStore = auth,
                                                                      .authSession = nullptr,
                                                                      .pasteboard = desktop,
                                                                      .workspace = workspace,
                                                                      .info = info,
                                                                      .settingsPath = QString()}});
        window->open();
        return *window;
    }

    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    AuthStore auth{folder.path(), defaults};
    FakePrivacyRights rights;
    PermissionManager perms{rights};
    AppNavigator nav;
    FakeWorkspace workspace;
    InfoDictionary info{{}};
    UiEngine engine{makeQmlEngine};
    std::unique_ptr<MainWindow> window;
};

} // namespace velmora::test
