#pragma once

#include "core/app_settings.h"

#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The settings of the program as a whole. Writing stores at once; what is stored elsewhere shows.
class GeneralSettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the sheet's")
    /// Each a `label` and its `hue`.
    Q_PROPERTY(QVariantList accents READ accents CONSTANT)
    /// The label of the chosen one.
    Q_PROPERTY(QString accent READ accent WRITE setAccent NOTIFY accentChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool showHUD READ showHUD WRITE setShowHUD NOTIFY showHUDChanged)
    Q_PROPERTY(QStringList readySounds READ readySounds CONSTANT)
    Q_PROPERTY(QString readySound READ readySound WRITE setReadySound NOTIFY readySoundChanged)

public:
    explicit GeneralSettingsModel(AppSettings& settings, QObject* parent = nullptr);

    [[nodiscard]] static QVariantList accents();
    [[nodiscard]] QString accent() const;
    void setAccent(const QString& label);
    [[nodiscard]] bool launchAtLogin() const { return m_settings.launchAtLogin(); }
    void setLaunchAtLogin(bool launch) { m_settings.setLaunchAtLogin(launch); }
    [[nodiscard]] bool showHUD() const { return m_settings.showHUD(); }
    void setShowHUD(bool show) { m_settings.setShowHUD(show); }
    [[nodiscard]] static QStringList readySounds();
    /// These are stored as they are shown; whatever else is stored is silence.
    [[nodiscard]] QString readySound() const;
    void setReadySound(const QString& label) { m_settings.setReadySound(label); }

Q_SIGNALS:
    void accentChanged();
    void launchAtLoginChanged();
    void showHUDChanged();
    void readySoundChanged();

private:
    AppSettings& m_settings;
};

} // namespace velmora
