#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// A tab of VPillNav. A view may write the same as an object: { id, label, icon, tint }.
struct VPillNavItem {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(int icon MEMBER icon)
    Q_PROPERTY(QColor tint MEMBER tint)

public:
    QString id;
    QString label;
    int icon = -1; ///< of VIcon; none when negative
    QColor tint{}; ///< of the icon; that of the label unless it is valid

    bool operator==(const VPillNavItem&) const = default;
};

} // namespace velmora
