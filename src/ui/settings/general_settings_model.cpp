#include "ui/settings/general_settings_model.h"

#include "ui/kit/accent_theme.h"
#include "ui/settings/setting_labels.h"

namespace velmora {
namespace {

const QString silence = QStringLiteral("Нет");

} // namespace

GeneralSettingsModel::GeneralSettingsModel(AppSettings& settings, QObject* parent)
    : QObject(parent)
    , m_settings(settings) {
    connect(&settings, &AppSettings::themeColorChanged, this, &GeneralSettingsModel::accentChanged);
    connect(&settings, &AppSettings::launchAtLoginChanged, this, &GeneralSettingsModel::launchAtLoginChanged);
    connect(&settings, &AppSettings::showHUDChanged, this, &GeneralSettingsModel::showHUDChanged);
    connect(&settings, &AppSettings::readySoundChanged, this, &GeneralSettingsModel::readySoundChanged);
}

QVariantList GeneralSettingsModel::accents() {
    QVariantList accents;
    for (const QVariant& label : themeColorLabels.labels()) {
        const AccentTheme accent = accentThemeFromName(themeColorLabels.value(label.toString()));
        accents.append(
            QVariantMap{{QStringLiteral("label"), label}, {QStringLiteral("hue"), accentColor(accent)}});
    }
    return accents;
}

QString GeneralSettingsModel::accent() const {
    return themeColorLabels.label(m_settings.themeColor());
}

void GeneralSettingsModel::setAccent(const QString& label) {
    m_settings.setThemeColor(themeColorLabels.value(label));
}

QStringList GeneralSettingsModel::readySounds() {
    return {silence, QStringLiteral("Тихий"), QStringLiteral("Системный")};
}

QString GeneralSettingsModel::readySound() const {
    const QString stored = m_settings.readySound();
    return readySounds().contains(stored) ? stored : silence;
}

} // namespace velmora
