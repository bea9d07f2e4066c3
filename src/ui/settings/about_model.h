#pragma once

#include "ui/settings/landing_site.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// What the program is.
class AboutModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the sheet's")
    /// "Версия 1.2.0"; empty in a program that doesn't know its own.
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(bool hasLinks READ hasLinks CONSTANT)

public:
    AboutModel(const InfoDictionary& info, Workspace& workspace, QObject* parent = nullptr);

    [[nodiscard]] QString version() const { return m_version; }
    [[nodiscard]] bool hasLinks() const { return m_site.exists(); }

    Q_INVOKABLE void openNews() { m_site.open(QStringLiteral("news")); }
    Q_INVOKABLE void openLicense() { m_site.open(QStringLiteral("legal/license")); }

private:
    const QString m_version;
    LandingSite m_site;
};

} // namespace velmora
