#pragma once

#include "support/settings_stage.h"
#include "support/ui/view_host.h"
#include "ui/settings/settings_sheet_model.h"

#include <gmock/gmock.h>

namespace velmora::test {

/// The settings, whose colours are those of the host's.
struct SettingsFixture : testing::Test {
    ~SettingsFixture() override { host.close(); }

    void showSheet(const QString& tab, QSize size = {980, 680}) {
        stage.nav.openSettings(tab);
        host.show("Settings", "SettingsSheet", {{QStringLiteral("model"), QVariant::fromValue(&model)}},
                  size);
        QMetaObject::invokeMethod(host.root(), "takeFocus");
    }
    [[nodiscard]] QString focusedName() const { return accessibleName(host.focused()); }
    [[nodiscard]] static bool isChecked(QQuickItem* item) { return item->property("checked").toBool(); }
    /// The body of the last request.
    [[nodiscard]] QByteArray lastBody() { return stage.transport.last().request.body; }

    ViewHost host;
    HandLoop loop;
    FakeWorkspace workspace;
    UserDefaults& defaults = host.defaults;
    AppSettings& settings = host.settings;
    AuthStore auth{host.folder.path(), defaults};
    InfoDictionary info{{{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.2.0")},
                         {QStringLiteral("VelmorLandingURL"), QStringLiteral("https://site.test")}}};
    SettingsStage stage{loop, defaults, settings, auth, workspace, info};
    SettingsSheetModel model{stage.neighbours};
};

} // namespace velmora::test
