#pragma once

#include <QQuickItem>
#include <QSize>
#include <QString>
#include <QVariantMap>

#include <functional>

namespace velmora::test {

class GalleryWorld;

/// One picture of the gallery: a view of the program in one state.
struct GalleryView {
    QString name;       ///< "capsule-recording-bars-small": family first; also the picture's file name
    const char* module; ///< the last part of the view's QML module, as in "Hud"
    const char* type;   ///< the view's type, as in "RecordingHUD"
    QSize size;         ///< of the window; as large as the view asks for when it is empty
    /// Sets the stage and gives the view's properties. Objects made for it belong to world.stage().
    std::function<QVariantMap(GalleryWorld&)> prepare = [](GalleryWorld&) { return QVariantMap(); };
    /// What a person would do then: open, hover, type.
    std::function<void(QQuickItem&)> arrange = [](QQuickItem&) {};
};

} // namespace velmora::test
