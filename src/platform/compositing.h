#pragma once

#include <QObject>

namespace velmora {

/// Whether windows can be see-through. Without a compositor transparent pixels come out black, and a window
/// that isn't rectangular has to be cut to its shape.
class Compositing : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isActive() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace velmora
