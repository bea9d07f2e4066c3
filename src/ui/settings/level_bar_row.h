#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// A row of small bars, 2 apart and 16 high, of which as many are lit as the level reaches.
class LevelBarRow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// 0 to 1.
    Q_PROPERTY(qreal level READ level WRITE setLevel NOTIFY levelChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)

public:
    static constexpr int barCount = 24;

    explicit LevelBarRow(QQuickItem* parent = nullptr);

    [[nodiscard]] qreal level() const { return m_level; }
    void setLevel(qreal level);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void levelChanged();
    void colorChanged();

private:
    qreal m_level = 0;
    QColor m_color = Qt::white;
};

/// Lit bars have opacity 1 and dark ones 0.16; that of the bar in which the level ends is between.
[[nodiscard]] qreal levelBarOpacity(int bar, qreal level);

} // namespace velmora
