#pragma once

#include <QQmlPropertyMap>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The icon table in views: `VIcon.micFill` is the number of VIcon::micFill.
class VIconNames : public QQmlPropertyMap {
    Q_OBJECT
    QML_NAMED_ELEMENT(VIcon)
    QML_SINGLETON

public:
    explicit VIconNames(QObject* parent = nullptr);
};

} // namespace velmora
