#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The interface face and the monospaced one. Sizes are in device-independent pixels and may be fractions.
class VFont : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum Weight {
        Regular = QFont::Normal,
        Medium = QFont::Medium,
        Semibold = QFont::DemiBold,
        Bold = QFont::Bold,
        Black = QFont::Black,
    };
    Q_ENUM(Weight)

    using QObject::QObject;

    [[nodiscard]] Q_INVOKABLE static QFont display(qreal size, velmora::VFont::Weight weight = Regular);
    [[nodiscard]] Q_INVOKABLE static QFont mono(qreal size, velmora::VFont::Weight weight = Regular);
};

} // namespace velmora
