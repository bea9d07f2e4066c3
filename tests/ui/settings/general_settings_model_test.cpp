#include "support/wait.h"
#include "ui/kit/accent_theme.h"
#include "ui/settings/general_settings_model.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

class GeneralSettingsModelTest : public testing::Test {
protected:
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("defaults.json"));
    UserDefaults defaults{path};
    AppSettings settings{defaults};
    GeneralSettingsModel model{settings};
};

struct Stored {
    const char* value;
    const char* label;
};

} // namespace

TEST_F(GeneralSettingsModelTest, FreshInstallation_ShowsTheDefaultsAndStoresNothing) {
    EXPECT_EQ(model.accent(), QStringLiteral("Lime"));
    EXPECT_FALSE(model.launchAtLogin());
    EXPECT_TRUE(model.showHUD());
    EXPECT_EQ(model.readySound(), QStringLiteral("Тихий"));
    for (const char* key : {"themeColor", "launchAtLogin", "showHUD", "readySound"})
        EXPECT_FALSE(defaults.contains(QLatin1String(key))) << key;
}

TEST_F(GeneralSettingsModelTest, Accents_BearTheirColours) {
    const QVariantList accents = GeneralSettingsModel::accents();
    ASSERT_EQ(accents.size(), 2);
    const QVariantMap first = accents.front().toMap();
    const QVariantMap second = accents.back().toMap();
    EXPECT_EQ(first.value(QStringLiteral("label")), QStringLiteral("Teal"));
    EXPECT_EQ(first.value(QStringLiteral("hue")).value<QColor>(), accentColor(AccentTheme::Teal));
    EXPECT_EQ(second.value(QStringLiteral("label")), QStringLiteral("Lime"));
    EXPECT_EQ(second.value(QStringLiteral("hue")).value<QColor>(), accentColor(AccentTheme::Lime));
}

TEST_F(GeneralSettingsModelTest, StoredAccent_ShowsAsTheOneThatIsSeen) {
    for (const Stored& c :
         {Stored{"teal", "Teal"}, Stored{"lime", "Lime"}, Stored{"Teal", "Lime"}, Stored{"", "Lime"}}) {
        settings.setThemeColor(QLatin1String(c.value));
        EXPECT_EQ(model.accent().toStdString(), c.label) << c.value;
    }
}

TEST_F(GeneralSettingsModelTest, ChosenAccent_IsStored) {
    for (const Stored& c : {Stored{"teal", "Teal"}, Stored{"lime", "Lime"}}) {
        model.setAccent(QLatin1String(c.label));
        EXPECT_EQ(defaults.string(QStringLiteral("themeColor")), QLatin1String(c.value));
    }
}

TEST_F(GeneralSettingsModelTest, StoredSound_ShowsAsItIsHeard) {
    EXPECT_THAT(GeneralSettingsModel::readySounds(),
                ElementsAre(QStringLiteral("Нет"), QStringLiteral("Тихий"), QStringLiteral("Системный")));
    for (const Stored& c : {Stored{"Нет", "Нет"}, Stored{"Тихий", "Тихий"}, Stored{"Системный", "Системный"},
                            Stored{"quiet", "Нет"}, Stored{"", "Нет"}}) {
        settings.setReadySound(QString::fromUtf8(c.value));
        EXPECT_EQ(model.readySound().toStdString(), c.label) << c.value;
    }
}

TEST_F(GeneralSettingsModelTest, ChosenSound_IsStoredAsItIsShown) {
    for (const QString& label : GeneralSettingsModel::readySounds()) {
        model.setReadySound(label);
        EXPECT_EQ(defaults.string(QStringLiteral("readySound")), label);
    }
}

TEST_F(GeneralSettingsModelTest, Switches_StoreTheirValue) {
    model.setLaunchAtLogin(true);
    model.setShowHUD(false);
    EXPECT_EQ(defaults.boolean(QStringLiteral("launchAtLogin")), true);
    EXPECT_EQ(defaults.boolean(QStringLiteral("showHUD")), false);
}

TEST_F(GeneralSettingsModelTest, ChangeByAnotherProcess_IsSaid) {
    QSignalSpy accents(&model, &GeneralSettingsModel::accentChanged);
    QSignalSpy sounds(&model, &GeneralSettingsModel::readySoundChanged);
    QSignalSpy launches(&model, &GeneralSettingsModel::launchAtLoginChanged);
    QSignalSpy capsules(&model, &GeneralSettingsModel::showHUDChanged);
    UserDefaults other(path);
    other.set(QStringLiteral("themeColor"), QStringLiteral("teal"));
    other.set(QStringLiteral("readySound"), QStringLiteral("Системный"));
    other.set(QStringLiteral("launchAtLogin"), true);
    other.set(QStringLiteral("showHUD"), false);
    ASSERT_TRUE(waitUntil([this] { return !model.showHUD(); }));
    EXPECT_EQ(model.accent(), QStringLiteral("Teal"));
    EXPECT_EQ(model.readySound(), QStringLiteral("Системный"));
    EXPECT_TRUE(model.launchAtLogin());
    for (const QSignalSpy* spy : {&accents, &sounds, &launches, &capsules})
        EXPECT_EQ(spy->size(), 1) << spy->signal().toStdString();
}
