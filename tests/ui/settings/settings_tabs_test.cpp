#include "ui/kit/v_icon.h"
#include "ui/settings/settings_tabs.h"

#include <gmock/gmock.h>

using namespace velmora;
using testing::ElementsAre;

TEST(SettingsTabs, AreThereInTheirOrder) {
    QStringList ids;
    QStringList labels;
    for (const VPillNavItem& tab : settingsTabs()) {
        ids.append(tab.id);
        labels.append(tab.label);
        EXPECT_GE(tab.icon, 0);
        EXPECT_LT(tab.icon, vIconCount);
    }
    EXPECT_THAT(ids, ElementsAre(QStringLiteral("general"), QStringLiteral("recording"), QStringLiteral("ai"),
                                 QStringLiteral("permissions"), QStringLiteral("about")));
    EXPECT_THAT(labels,
                ElementsAre(QStringLiteral("Общие"), QStringLiteral("Запись"), QStringLiteral("Обработка"),
                            QStringLiteral("Разрешения"), QStringLiteral("О программе")));
}

TEST(SettingsTabs, Beside_GoesAroundTheEnds) {
    struct Case {
        const char* tab;
        int steps;
        const char* beside;
    };
    for (const Case& c : {
             Case{"general", 1, "recording"},
             Case{"permissions", 1, "about"},
             Case{"about", 1, "general"},
             Case{"about", -1, "permissions"},
             Case{"general", -1, "about"},
             Case{"integrations", 1, "general"},
             Case{"integrations", -1, "about"},
             Case{"", 1, "general"},
         })
        EXPECT_EQ(settingsTabBeside(QLatin1String(c.tab), c.steps).toStdString(), c.beside)
            << c.tab << ' ' << c.steps;
}
