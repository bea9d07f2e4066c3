#pragma once

#include "backend/account_refresh.h"
#include "ui/settings/settings_neighbours.h"

#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// How the server treats what was said. These settings follow the account; a change shows at once and is sent
/// after a pause.
class AISettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the sheet's")
    Q_PROPERTY(Page page READ page NOTIFY changed)
    Q_PROPERTY(QVariantList languages READ languages CONSTANT)
    /// The label of the chosen one.
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY changed)
    Q_PROPERTY(bool cleanupEnabled READ cleanupEnabled WRITE setCleanupEnabled NOTIFY changed)
    Q_PROPERTY(bool devModeEnabled READ devModeEnabled WRITE setDevModeEnabled NOTIFY changed)

public:
    enum class Page { SignedOut, Loading, Loaded };
    Q_ENUM(Page)

    explicit AISettingsModel(const SettingsNeighbours& neighbours, QObject* parent = nullptr);

    [[nodiscard]] Page page() const;
    [[nodiscard]] static QVariantList languages();
    [[nodiscard]] QString language() const;
    void setLanguage(const QString& label);
    [[nodiscard]] bool cleanupEnabled() const { return preferences().cleanupEnabled; }
    void setCleanupEnabled(bool enabled);
    [[nodiscard]] bool devModeEnabled() const { return preferences().devModeEnabled; }
    void setDevModeEnabled(bool enabled);

    /// While the view is seen, preferences that aren't known are asked for, again and again if need be.
    Q_INVOKABLE void setSeen(bool seen);

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] BackendPreferences preferences() const;
    void readIfMissing();

    MainLoop& m_loop;
    const AuthStore& m_authStore;
    AuthSession& m_authSession;
    AccountRefresh m_refresh;
    Timer m_retry;
};

} // namespace velmora
