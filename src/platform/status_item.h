#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QRect>

#include <optional>

namespace velmora {

/// The program's icon in the desktop's tray. It appears as soon as there is a tray to appear in, also one
/// that starts later.
class StatusItem : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether a tray shows it now.
    [[nodiscard]] virtual bool isShown() const = 0;
    /// The square picture in several sizes; the tray takes the one that fits it.
    virtual void setImage(const QList<QImage>& sizes) = 0;
    /// What assistive technology and a pointer at rest read.
    virtual void setToolTip(const QString& text) = 0;
    /// Where it is on the screen, where the tray tells; else where the pointer is, for that is what has just
    /// clicked it.
    [[nodiscard]] virtual std::optional<QRect> frame() const = 0;
    /// Whether the pointer may be on it: true as well where the tray doesn't tell its place.
    [[nodiscard]] virtual bool isUnderPointer() const = 0;

Q_SIGNALS:
    /// Any mouse button, or the keyboard.
    void clicked();
    void shownChanged();
};

} // namespace velmora
