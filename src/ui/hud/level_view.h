#pragma once

#include "core/level_source.h"

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

#include <span>

namespace velmora {

/// A drawing of a voice.
class LevelView : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(velmora::LevelSource* source READ source WRITE setSource NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit LevelView(QQuickItem* parent = nullptr);

    [[nodiscard]] LevelSource* source() const { return m_source; }
    void setSource(LevelSource* source);

Q_SIGNALS:
    void changed();

protected:
    /// The source's levels, the newest last; none without a source.
    [[nodiscard]] std::span<const float> levels() const;
    [[nodiscard]] const QColor& color() const { return m_color; }
    /// The source has heard something new.
    virtual void followLevels() = 0;
    /// Something else than the levels has changed: nothing moves from where it was.
    virtual void adjust() = 0;

private:
    QPointer<LevelSource> m_source;
    QColor m_color = Qt::white;
};

} // namespace velmora
