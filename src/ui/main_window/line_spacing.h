#pragma once

#include <QObject>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// Room between the lines of a TextEdit, which has no property for it.
class LineSpacing : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Gives all lines that are there the height, as a multiple of the font's. A text that is set later has
    /// none.
    Q_INVOKABLE static void apply(QQuickTextDocument* document, qreal height);
};

} // namespace velmora
