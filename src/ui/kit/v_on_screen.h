#pragma once

#include <QQuickItem>

namespace velmora {

/// Tells whether the place it lies in can be seen: it is visible, and its window is on the screen and has
/// drawn it. For what is only worth doing while somebody looks.
class VOnScreen : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] bool isShown() const { return m_shown; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void shownChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void follow(QQuickWindow* window);
    void look();
    void setShown(bool shown);

    QPointer<QQuickWindow> m_window;
    QMetaObject::Connection m_frame; // of the first frame to come
    bool m_shown = false;
};

} // namespace velmora
