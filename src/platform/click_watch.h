#pragma once

#include <QObject>
#include <QPoint>

namespace velmora {

/// Tells of mouse presses anywhere on the desktop, also in other programs, while it is on. Where a desktop
/// keeps them to itself there are none.
class ClickWatch : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void setEnabled(bool enabled) = 0;

Q_SIGNALS:
    /// The left or the right button, in device-independent pixels of the virtual desktop.
    void pressed(const QPoint& at);
};

} // namespace velmora
