#pragma once

#include "core/audio_recorder.h"

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

#include <span>

namespace velmora {

struct AudioRecorderForViews {
    Q_GADGET
    QML_FOREIGN(velmora::AudioRecorder)
    QML_NAMED_ELEMENT(AudioRecorder)
    QML_UNCREATABLE("there is one, the program's")
};

/// A drawing of the voice that a recorder hears.
class LevelView : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(velmora::AudioRecorder* recorder READ recorder WRITE setRecorder NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit LevelView(QQuickItem* parent = nullptr);

    [[nodiscard]] AudioRecorder* recorder() const { return m_recorder; }
    void setRecorder(AudioRecorder* recorder);

Q_SIGNALS:
    void changed();

protected:
    /// The recorder's levels, the newest last; none without a recorder.
    [[nodiscard]] std::span<const float> levels() const;
    [[nodiscard]] const QColor& color() const { return m_color; }
    /// The recorder has heard something new.
    virtual void followLevels() = 0;
    /// Something else than the levels has changed: nothing moves from where it was.
    virtual void adjust() = 0;

private:
    QPointer<AudioRecorder> m_recorder;
    QColor m_color = Qt::white;
};

} // namespace velmora
